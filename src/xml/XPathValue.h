#pragma once

#include <string>
#include <string_view>

#include "xml/XPathNodes.h"
#include "xml/XPathSyntax.h"

namespace corvane::xml::xpath {

/// What an expression gives.
struct Value {
    Type type = Type::Nodes;
    Items items;
    bool boolean = false;
    double number = 0;
    std::u16string text;

    static Value of(Items items);
    static Value of(bool boolean);
    static Value of(double number);
    static Value of(std::u16string text);
};

bool toBoolean(const Value& value);
double toNumber(Tree& tree, const Value& value);
std::u16string toText(Tree& tree, const Value& value);

double numberOf(std::u16string_view text);
std::u16string textOfNumber(double number);

/// The result of an operator other than "or" and "and".
Value applied(Tree& tree, Operator op, const Value& left, const Value& right);

/// Where a call is made.
struct Place {
    Item item;
    std::size_t position = 1;
    std::size_t size = 1;
};

/// The result of a function that has been given the arguments that it takes.
Value called(Tree& tree, Function function, const std::vector<Value>& arguments,
             const Place& place);

}  // namespace corvane::xml::xpath
