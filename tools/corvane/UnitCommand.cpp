#include <CLI/CLI.hpp>
#include <charconv>
#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "Commands.h"
#include "Table.h"
#include "UnitTable.h"

namespace {

/// A decimal number, whatever the locale. Nothing when the text is none, or beyond a double.
std::optional<double> number(const CStringW& text) {
    const std::string bytes = text.ToUtf8();
    const char* first = bytes.data();
    const char* last = first + bytes.size();
    if (bytes.starts_with('+') && !bytes.starts_with("+-")) ++first;
    double value = 0;
    const auto [end, error] = std::from_chars(first, last, value);
    if (error != std::errc() || end != last || !std::isfinite(value)) return std::nullopt;
    return value;
}

/// The shortest text that reads back as the same number.
CStringW shortest(double value) {
    constexpr std::size_t kLongest = 24;  // "-1.2345678901234567e-308"
    char text[kLongest];
    const char* end = std::to_chars(text, text + kLongest, value).ptr;
    return CStringW(std::u16string(static_cast<const char*>(text), end));
}

void listUnits(Console& console) {
    Table table({tr("Quantity"), tr("Code"), tr("Symbol"), tr("Name")});
    for (const Unit& unit : allUnits()) {
        CStringW code;
        code.Format(u"%d", unit.code);
        table.add({{quantityName(unit.quantity), code, unit.symbol}, {unit.name}});
    }
    table.print(console);
}

class UnitCommand : public Command {
public:
    explicit UnitCommand(CLI::App& program)
        : Command(program, "units", "Convert a value from one unit to another, or list the units",
                  "Exit status: 0 the result is printed, 2 a value that is no number, an unknown\n"
                  "unit, or two units that do not measure the same.") {
        const Option value = addText(parser(), "VALUE", value_, "A decimal number");
        addText(parser(), "FROM", from_, "The symbol or name of its unit, as mm or millimetre");
        addText(parser(), "TO", to_, "That of the unit to convert it to");
        addFlag(parser(), "--list", list_, trUtf8("List the units with their symbols and codes"))
            .excludes(value);
        parser().allow_extras();
        onRead(parser(), [this] { checkUsage(); });
    }

    int run(Console& console) override {
        if (!list_) return convertValue(console);
        listUnits(console);
        return kGood;
    }

private:
    void checkUsage() {
        std::vector<std::string> extras = parser().remaining();
        std::erase(extras, "--");
        if (extras.size() == 1 && !from_.IsEmpty() && to_.IsEmpty()) {
            // The parser takes "-.5" for an option, and the units move up into its place.
            to_ = std::exchange(from_, std::exchange(value_, CStringW(extras[0].c_str())));
        } else if (!extras.empty()) {
            throw CLI::ExtrasError(parser().get_name(), extras);
        }
        if (!list_ && to_.IsEmpty()) throw CLI::RequiredError(trUtf8("VALUE FROM TO or --list"));
    }

    static int refuse(Console& console, const CStringW& why) {
        console.report(u"corvane units: " + why);
        return kUnusable;
    }

    int convertValue(Console& console) const {
        const std::optional<double> value = number(value_);
        if (!value)
            return refuse(console,
                          tr("'{0}' is no number that can be converted; write it as 25.4 or "
                             "2.54e1",
                             value_));
        const Unit* from = findUnit(from_);
        const Unit* to = findUnit(to_);
        if (!from || !to)
            return refuse(console, tr("'{0}' is no unit; corvane units --list shows them all",
                                      from ? to_ : from_));
        if (from->quantity != to->quantity)
            return refuse(console,
                          tr("{0} is a unit of {1} and {2} one of {3}", from_,
                             quantityName(from->quantity), to_, quantityName(to->quantity)));
        const double result = convert(*value, *from, *to);
        if (!std::isfinite(result)) return refuse(console, tr("the result is too large"));
        console.writeLine(shortest(result));
        return kGood;
    }

    CStringW value_;
    CStringW from_;
    CStringW to_;
    bool list_ = false;
};

}  // namespace

std::unique_ptr<Command> makeUnitCommand(CLI::App& program) {
    return std::make_unique<UnitCommand>(program);
}
