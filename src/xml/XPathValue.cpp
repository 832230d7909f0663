#include "xml/XPathValue.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <unordered_set>
#include <utility>

#include "text/Numbers.h"

namespace corvane::xml::xpath {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

bool isDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

std::u16string_view trimmed(std::u16string_view text) {
    while (!text.empty() && isWhite(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isWhite(text.back()))
        text.remove_suffix(1);
    return text;
}

// Digits with at most one point among them.
bool isDecimal(std::u16string_view text) {
    const auto digits = std::count_if(text.begin(), text.end(), isDigit);
    const auto points = std::count(text.begin(), text.end(), u'.');
    return digits > 0 && points <= 1 && static_cast<std::size_t>(digits + points) == text.size();
}

bool compareNumbers(Operator op, double left, double right) {
    switch (op) {
        case Operator::Equal:
            return left == right;
        case Operator::NotEqual:
            return left != right;
        case Operator::Less:
            return left < right;
        case Operator::LessOrEqual:
            return left <= right;
        case Operator::Greater:
            return left > right;
        default:
            return left >= right;
    }
}

double calculate(Operator op, double left, double right) {
    switch (op) {
        case Operator::Add:
            return left + right;
        case Operator::Subtract:
            return left - right;
        case Operator::Multiply:
            return left * right;
        case Operator::Divide:
            return left / right;
        default:
            return std::fmod(left, right);
    }
}

Operator mirrored(Operator op) {
    switch (op) {
        case Operator::Less:
            return Operator::Greater;
        case Operator::LessOrEqual:
            return Operator::GreaterOrEqual;
        case Operator::Greater:
            return Operator::Less;
        case Operator::GreaterOrEqual:
            return Operator::LessOrEqual;
        default:
            return op;
    }
}

class Comparison {
public:
    Comparison(Tree& tree, Operator op) : tree_(tree), op_(op) {}

    bool compare(const Value& left, const Value& right) {
        if (left.type == Type::Nodes && right.type == Type::Nodes)
            return isEquality() ? equalNodes(left.items, right.items)
                                : orderedNodes(left.items, right.items);
        if (left.type == Type::Nodes) return nodes(op_, left, right);
        if (right.type == Type::Nodes) return nodes(mirrored(op_), right, left);
        return plain(left, right);
    }

private:
    bool isEquality() const { return op_ == Operator::Equal || op_ == Operator::NotEqual; }

    bool plain(const Value& left, const Value& right) {
        if (isEquality()) {
            if (left.type == Type::Boolean || right.type == Type::Boolean)
                return (toBoolean(left) == toBoolean(right)) == (op_ == Operator::Equal);
            if (left.type == Type::String && right.type == Type::String)
                return (left.text == right.text) == (op_ == Operator::Equal);
        }
        return compareNumbers(op_, toNumber(tree_, left), toNumber(tree_, right));
    }

    // True when the comparison holds for one of the nodes.
    bool nodes(Operator op, const Value& left, const Value& right) {
        if (right.type == Type::Boolean) {
            const double truth = toBoolean(left) ? 1 : 0;
            return compareNumbers(op, truth, right.boolean ? 1 : 0);
        }
        if (right.type == Type::String && isEquality()) {
            return std::any_of(left.items.begin(), left.items.end(), [&](const Item& item) {
                return tree_.hasString(item, right.text) == (op == Operator::Equal);
            });
        }
        const double number = toNumber(tree_, right);
        return std::any_of(left.items.begin(), left.items.end(), [&](const Item& item) {
            return compareNumbers(op, numberOf(tree_.stringOf(item)), number);
        });
    }

    bool equalNodes(const Items& left, const Items& right) {
        std::unordered_set<std::u16string> texts;
        for (const Item& item : left) {
            texts.insert(tree_.stringOf(item));
            // Two different strings on one side differ from any on the other.
            if (op_ == Operator::NotEqual && texts.size() > 1) return !right.empty();
        }
        if (texts.empty()) return false;
        return std::any_of(right.begin(), right.end(), [&](const Item& item) {
            return texts.contains(tree_.stringOf(item)) == (op_ == Operator::Equal);
        });
    }

    // One pair is in that order when the extremes are.
    bool orderedNodes(const Items& left, const Items& right) {
        const bool less = op_ == Operator::Less || op_ == Operator::LessOrEqual;
        const std::optional<double> a = extreme(left, less);
        const std::optional<double> b = extreme(right, !less);
        return a && b && compareNumbers(op_, *a, *b);
    }

    std::optional<double> extreme(const Items& items, bool least) {
        std::optional<double> found;
        for (const Item& item : items) {
            const double number = numberOf(tree_.stringOf(item));
            if (std::isnan(number)) continue;
            if (!found || (least ? number < *found : number > *found)) found = number;
        }
        return found;
    }

    Tree& tree_;
    Operator op_;
};

}  // namespace

Value Value::of(Items items) {
    Value value;
    value.items = std::move(items);
    return value;
}
Value Value::of(bool boolean) {
    Value value;
    value.type = Type::Boolean;
    value.boolean = boolean;
    return value;
}
Value Value::of(double number) {
    Value value;
    value.type = Type::Number;
    value.number = number;
    return value;
}
Value Value::of(std::u16string text) {
    Value value;
    value.type = Type::String;
    value.text = std::move(text);
    return value;
}

double numberOf(std::u16string_view text) {
    text = trimmed(text);
    std::u16string_view digits = text;
    if (digits.starts_with(u'-')) digits.remove_prefix(1);
    double number = kNaN;
    if (isDecimal(digits)) text::scanDouble(text, number);
    return number;
}

std::u16string textOfNumber(double number) {
    if (std::isnan(number)) return u"NaN";
    if (std::isinf(number)) return number > 0 ? u"Infinity" : u"-Infinity";
    if (number == 0) return u"0";
    // As many places as a number of this type is sure to have.
    const int whole = static_cast<int>(std::log10(std::fabs(number)));
    const int places =
        std::max(0, std::numeric_limits<double>::digits10 - whole - (whole > 0 ? 1 : 0));
    std::array<char, 1100> buffer;
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number,
                                      std::chars_format::fixed, places);
    std::u16string text(buffer.data(), result.ptr);
    if (text.find(u'.') != text.npos) {
        text.erase(text.find_last_not_of(u'0') + 1);
        if (text.back() == u'.') text.pop_back();
    }
    return text;
}

bool toBoolean(const Value& value) {
    switch (value.type) {
        case Type::Nodes:
            return !value.items.empty();
        case Type::Boolean:
            return value.boolean;
        case Type::Number:
            return value.number != 0 && !std::isnan(value.number);
        default:
            return !value.text.empty();
    }
}

double toNumber(Tree& tree, const Value& value) {
    switch (value.type) {
        case Type::Number:
            return value.number;
        case Type::Boolean:
            return value.boolean ? 1 : 0;
        default:
            return numberOf(toText(tree, value));
    }
}

std::u16string toText(Tree& tree, const Value& value) {
    switch (value.type) {
        case Type::Nodes:
            return value.items.empty() ? std::u16string() : tree.stringOf(value.items.front());
        case Type::Boolean:
            return value.boolean ? u"true" : u"false";
        case Type::Number:
            return textOfNumber(value.number);
        default:
            return value.text;
    }
}

Value applied(Tree& tree, Operator op, const Value& left, const Value& right) {
    if (op >= Operator::Add)
        return Value::of(calculate(op, toNumber(tree, left), toNumber(tree, right)));
    return Value::of(Comparison(tree, op).compare(left, right));
}

}  // namespace corvane::xml::xpath
