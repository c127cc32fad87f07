// The program itself, as it lies in the program folder, on the simulated interface.
#include "cli/program_bench.h"

namespace karvo
{
namespace
{

using KarvoCliTest = test::ProgramBench;

TEST_F(KarvoCliTest, SpeaksFiveLanguages)
{
    expect({
        {"read --language de --simulate kv04", 0, "CV1  = 3             Erste Adresse (kurz)"},
        {"read --language nl --simulate kv04-2008", 0, "Eerste adres (kort)"},
        {"read --language en", 0, "First address (short)"},
        {"read --language es", 0, "\n  1 = "},
        {"read --language fr", 0, "Première adresse (courte)"},
        {"read -h --language de", 0, "Aufruf: karvo-cli read\nliest alle CVs"},
        {"read -h --language nl", 0, "Gebruik: karvo-cli read\nleest alle CV's"},
        {"read -h --language es", 0, "Uso: karvo-cli read\nlee todas las CVs"},
        {"read -h --language fr", 0, "Utilisation : karvo-cli read\nlit toutes les CV"},
        {"raed --language nl", 2, "", "raed is geen opdracht. Bedoelde u read?"},
    });
}

TEST_F(KarvoCliTest, ExitCodesTellWhatWentWrong)
{
    expect({
        {"read --fault unknown-identification", 5, "", "does not know"},
        {"read --fault wrong-check-byte", 6, "", "wrong check byte"},
        {"read --fault hang-up", 4, "", "does not reply"},
        {"identify --fault silence --json", 4,
         "\"error\": {\n        \"code\": \"noReply\",\n        \"exit\": 4,\n"
         "        \"message\": \"The vehicle does not reply.",
         "does not reply"},
        {"read --simulate kv99", 2, "", "There are: kv07"},
        {"read --fault nonsense --json", 2, "\"code\": \"wrongArguments\"", "It has: none"},
        {"read --map-port nonsense", 2, "", "nonsense maps no port"},
        {"read --language xx --json", 2, "\"message\": \"There is no language xx."},
        {"list kv99", 2, "", "There is no list kv99."},
        {"list kv07 --variant 2", 2, "", "has no variants"},
        {"list kv07 --program-folder /none --language fr", 1, "",
         "File [Franz_var.txt] not available !\nSet language to German.\n\nProgram will be closed\n"},
        {"compare @a @b --program-folder /none --json", 2, "\"code\": \"cannotCompare\""},
        {"read --output /none/a.kvr", 1, "", "/none/a.kvr"},
        {"export @none.kvr @x.csv", 1, "", "none.kvr"},
    });
    EXPECT_FALSE(QFile::exists(pathOf("x.csv")));
    usual_ = QStringLiteral("--language en ");
    expect({{"read --map-port COM7=/nowhere/at/all --port COM7", 3, "", "COM7 (device /nowhere/at/all)"}});
}

TEST_F(KarvoCliTest, IdentifiesListsAndReads)
{
    expect({
        {"ports --json", 0, "\"withoutNumber\": ["},
        {"identify --simulate trailer", 0, "AN07 (A7)\n"},
        {"list", 0, "kv04-bus-08\nkv04-fw-08"},
        {"list --json", 0, "\"lists\": [\n        \"kv07\","},
        {"list KV04", 0, "| CV_Standart180.txt\nCV1 "},
        {"list kv04-fw-09 --variant 3", 0, "| CV_KV04_FW_V3_09.txt\nCV1 "},
        {"read --json", 0, "\"firmware\": 6"},
        {"read --json", 0, "\"upper\": 126,\n            \"value\": 3"},
        {"read --json", 0, "\"cv\": 176"},
    });
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

TEST_F(KarvoCliTest, ComparesTwoLists)
{
    expect({
        {"read --output @a.kvr", 0, ""},
        {"read --output @b.kvr", 0, ""},
        {"read --output @c.kvr --simulate kv04-2008", 0, ""},
        {"compare @a.kvr @b.kvr", 0, " equal, 0 different, 0 only left, 0 only right"},
        {"set @b.kvr CV1=77 CV84=60", 0, "@b.kvr: CV1 3 -> 77\n@b.kvr: CV84 50 -> 60\n"},
        {"compare @a.kvr @b.kvr", 1, "\nCV1 = 3\t77\tdifferent\tFirst address (short)\n  14 (CV84) = "},
        {"compare @a.kvr @b.kvr --json", 1, "\"different\": 2,"},
        {"compare @a.kvr @b.kvr --json", 1, "\"result\": \"different\",\n            \"second\": 77"},
        {"compare @a.kvr @c.kvr", 2, "", "The file is from an ATmega168\n"},
        {"compare @a.kvr @none.kvr --json", 2, "\"code\": \"cannotCompare\""},
    });
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
