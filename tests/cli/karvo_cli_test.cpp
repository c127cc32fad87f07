// The program itself, as it lies in the program folder, on the simulated interface.
#include "cli/program_bench.h"

namespace karvo
{
namespace
{

using KarvoCliTest = test::ProgramBench;

TEST_F(KarvoCliTest, SpeaksFiveLanguagesAndTellsByItsExitCodeWhatWentWrong)
{
    for (const char* const cases : {"languages.txt", "reads.txt", "failures.txt", "compare.txt"})
        expectAll(cases);
    EXPECT_FALSE(QFile::exists(pathOf("x.csv")));
    usual_.clear();
    save("karvo.ini", "[Parameter]\nLanguage=5\n");
    expect({{"", 2, "", "Il manque une commande."}});
    usual_ = QStringLiteral("--language en ");
    expect({{"read --map-port COM7=/nowhere/at/all --port COM7", 3, "", "COM7 (device /nowhere/at/all)"}});
}

TEST_F(KarvoCliTest, SavesAndReplacesWithConsentOnly)
{
    usual_ += QStringLiteral("--language de ");
    expect({
        {"read --output @bus.kvr", 0, ""},
        {"read --output @bus.csv", 0, ""},
        {"read --output @bus.txt", 0, ""},
        {"export @bus.kvr @out.csv --json", 0, "\"saved\": \"@out.csv\""},
        {"export @bus.kvr @out.txt", 0, ""},
        {"sheet --from @bus.kvr", 0, "bus  Bus Automatik\nbus_clear"},
        {"sheet bus --from @bus.kvr", 0, "CV102 = 12  Bus: Haltezeit: 12 s  * Werkswert 0\n  CV107"},
        {"sheet spur --from @bus.kvr", 2, "", "KV07 LC, KV08 LC"},
        {"sheet taxi --from @bus.kvr", 2, "", "taxi"},
        {"sheet bus --from @bus.kvr --json", 0, "\"values\": \"CV22=7 CV66=40 CV101=60 CV102=12 CV103=10"},
        {"describe @bus.kvr", 0, "\n  * Fährt mit Grundgeschwindigkeit 5, höchstens 160.\n    Rollt"},
        {"describe @bus.kvr --json", 0, "\"isFactory\": false,"},
    });
    const std::pair<const char*, const char*> parts[] = {
        {"bus.kvr", "Standard KV07*6\r\n1;3;Erste Adresse (kurz);"},
        {"bus.kvr", "\r\nEnde CV\r\nATmega328\r\nFirmware_Version: 6\r\nAnfang FS\r\n"},
        {"bus.csv", "CV-Nummer;CV-Wert;CV-Text\r\n1;3;Erste Adresse (kurz)\r\n2;"},
        {"bus.txt", "KV07\r\nKV07  Firmware = 6"},
        {"bus.txt", "\r\nCV1  = 3 "},
        {"out.txt", "bus\r\nKV07  Firmware = 6 | bus.kvr\r\n\r\nCV1  = 3 "},
    };
    for (const auto& [file, part] : parts)
        EXPECT_NE(contentOf(file).find(part), std::string::npos) << file << part;
    EXPECT_EQ(contentOf("out.csv"), contentOf("bus.csv"));
    const auto before = contentOf("bus.kvr");
    expect({{"read --simulate kv08 --output @bus.kvr --language en", 1, "",
             "Nobody can answer here, which counts as No. --yes says Yes.\n@bus.kvr was left as it is."}});
    EXPECT_EQ(contentOf("bus.kvr"), before);
    expect({{"read --simulate kv08 --output @bus.kvr --yes", 0, ""}});
    EXPECT_EQ(contentOf("bus.kvr").find("Standard KV08*"), 0U);
}

TEST_F(KarvoCliTest, ChangesManyLists)
{
    expect({{"read --output @a.kvr --language de", 0, ""}, {"read --output @b.kvr --simulate kv08", 0, ""}});
    auto expected = contentOf("a.kvr");
    const char* const changes = "@a.kvr: CV1 3 -> 99\n@b.kvr: CV1 3 -> 99\n";
    const char* const refused = "@none.kvr: The file cannot be read\n";
    expect({{"set @a.kvr @b.kvr @none.kvr CV1=99 --dry-run", 1, changes, refused}});
    EXPECT_EQ(contentOf("a.kvr"), expected);
    expect({{"set @a.kvr @b.kvr @none.kvr CV1=99", 1, changes, refused}});
    expected.replace(expected.find("\r\n1;3;"), 6, "\r\n1;99;");
    EXPECT_EQ(contentOf("a.kvr"), expected);
    EXPECT_NE(contentOf("b.kvr").find("\r\n1;99;"), std::string::npos);
    expect({
        {"set @a.kvr CV1=127 CV2=7", 1, "", "a.kvr: CV1 may only be from 1 to 126 here\n"},
        {"set @a.kvr CV1=127 CV2=7 --json", 1, "\"code\": \"outsideLimits\",\n                    \"cv\": 1"},
        {"set @a.kvr @none.kvr CV2=7 --json", 1, "\"code\": \"cannotRead\""},
    });
}

} // namespace
} // namespace karvo
