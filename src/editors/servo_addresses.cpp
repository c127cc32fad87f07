#include "editors/servo_addresses.h"

#include "cvdata/dcc_address.h"
#include "editors/editor_gate.h"
#include "link/write.h"

namespace karvo
{

namespace
{

constexpr int lowestAddress = 1;
constexpr int highestAddress = 9999;

struct ServoCvs {
    int high;
    int low;
    int takeOver() const { return takeOverCvOf(high); } // of receivers
};
constexpr ServoCvs bothServos[] = {{11, 12}, {13, 14}};

const ServoCvs& cvsOf(int servo)
{
    return bothServos[servo - 1];
}

// 0 for none; nothing for what is no address.
std::optional<int> addressFrom(TextView typed)
{
    if (trimmed(typed).empty())
        return 0;
    const auto number = numberFromText(trimmed(typed));
    const bool isOne = number && (*number == 0 || (*number >= lowestAddress && *number <= highestAddress));
    return isOne ? number : std::nullopt;
}

} // namespace

bool hasServoAddress(const CvSet& set, int servo)
{
    const ServoCvs& cvs = cvsOf(servo);
    return servo == 1 || (dealsWith(Editor::servoAddresses, set, cvs.high) &&
                          dealsWith(Editor::servoAddresses, set, cvs.low));
}

Text servoAddressOf(const CvTable& table, int servo)
{
    const auto high = table.value(cvsOf(servo).high);
    const auto low = table.value(cvsOf(servo).low);
    const int address = high && low ? longAddress(*high, *low) : 0;
    return address == 0 ? Text() : textFromNumber(address);
}

std::variant<WritePlan, int> planOfServoAddresses(std::span<const TypedServoAddress> addresses,
                                                  const CvSet& set)
{
    WritePlan plan;
    for (const TypedServoAddress& typed : addresses) {
        if (!typed.write)
            continue;
        const auto address = addressFrom(typed.address);
        if (!address)
            return typed.servo;
        const ServoCvs& cvs = cvsOf(typed.servo);
        plan.push_back({cvs.high, highPartOf(*address)});
        plan.push_back({cvs.low, lowPartOf(*address)});
        if (dealsWith(Editor::servoAddresses, set, cvs.takeOver()))
            plan.push_back({cvs.takeOver(), takeOverValue});
    }
    return plan;
}

Text servoAddressesWritten(const WritePlan& plan, const LanguageTables& texts)
{
    Text lines;
    for (const ServoCvs& cvs : bothServos) {
        for (const PlannedWrite& write : plan) {
            if (write.cv == cvs.high)
                lines += (lines.empty() ? Text() : Text(lineBreak)) + writtenNotice(cvs.takeOver(), texts);
        }
    }
    return lines;
}

} // namespace karvo
