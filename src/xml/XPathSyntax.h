#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::xml::xpath {

enum class Axis : std::uint8_t {
    Ancestor,
    AncestorOrSelf,
    Attribute,
    Child,
    Descendant,
    DescendantOrSelf,
    Following,
    FollowingSibling,
    Namespace,
    Parent,
    Preceding,
    PrecedingSibling,
    Self
};

/// The axes whose nodes come in the reverse of document order.
constexpr bool isReverse(Axis axis) {
    return axis == Axis::Ancestor || axis == Axis::AncestorOrSelf || axis == Axis::Preceding ||
           axis == Axis::PrecedingSibling;
}

enum class Test : std::uint8_t {
    Name,         ///< A name as written.
    AnyName,      ///< "*"
    AnyOfPrefix,  ///< "p:*"
    AnyNode,
    Text,
    Comment,
    Instruction  ///< With a target or "" for any.
};

struct Expression;

struct Step {
    Axis axis = Axis::Child;
    Test test = Test::AnyNode;
    std::u16string name;
    std::vector<Expression> predicates;
    /// A predicate looks at the place of a node among those of its context node.
    bool positional = false;
};

enum class Function : std::uint8_t {
    Boolean,
    Ceiling,
    Concat,
    Contains,
    Count,
    False,
    Floor,
    Id,
    Lang,
    Last,
    LocalName,
    Name,
    NamespaceUri,
    NormalizeSpace,
    Not,
    Number,
    Position,
    Round,
    StartsWith,
    String,
    StringLength,
    Substring,
    SubstringAfter,
    SubstringBefore,
    Sum,
    Translate,
    True
};

enum class Type : std::uint8_t { Nodes, Boolean, Number, String };

enum class Operator : std::uint8_t {
    Or,
    And,
    Equal,
    NotEqual,
    Less,
    LessOrEqual,
    Greater,
    GreaterOrEqual,
    Add,
    Subtract,
    Multiply,
    Divide,
    Modulo
};

/// A parsed expression. Operators of one precedence that follow one another are one expression, so
/// that its depth is that of the brackets in the query.
struct Expression {
    enum class Kind : std::uint8_t {
        Chain,   ///< The operands with the operators between them, from left to right.
        Negate,  ///< One operand.
        Union,   ///< The operands' nodes.
        Literal,
        Number,
        Call,  ///< The operands are the arguments.
        Path   ///< The steps from the root, the one operand's nodes or the context node.
    };

    Kind kind = Kind::Path;
    Type type = Type::Nodes;
    std::vector<Expression> operands;
    std::vector<Operator> operators;
    std::u16string text;
    double number = 0;
    Function function = Function::True;
    bool absolute = false;               ///< A path from the root.
    std::vector<Expression> predicates;  ///< Of the operand of a path.
    std::vector<Step> steps;
    bool asksPosition = false;  ///< Calls position() or last() of its own context.
};

/// Parses an XPath 1.0 expression. Nothing when it is none, calls a function that does not exist or
/// with other arguments than that has, names a variable, or has brackets nested too deep.
std::optional<Expression> parseExpression(std::u16string_view query);

}  // namespace corvane::xml::xpath
