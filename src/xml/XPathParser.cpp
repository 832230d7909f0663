#include <algorithm>
#include <charconv>
#include <iterator>
#include <utility>

#include "xml/Names.h"
#include "xml/Node.h"
#include "xml/XPathSyntax.h"

namespace corvane::xml::xpath {
namespace {

constexpr int kDeepest = 64;

constexpr std::pair<std::u16string_view, Axis> kAxes[] = {
    {u"ancestor", Axis::Ancestor},
    {u"ancestor-or-self", Axis::AncestorOrSelf},
    {u"attribute", Axis::Attribute},
    {u"child", Axis::Child},
    {u"descendant", Axis::Descendant},
    {u"descendant-or-self", Axis::DescendantOrSelf},
    {u"following", Axis::Following},
    {u"following-sibling", Axis::FollowingSibling},
    {u"namespace", Axis::Namespace},
    {u"parent", Axis::Parent},
    {u"preceding", Axis::Preceding},
    {u"preceding-sibling", Axis::PrecedingSibling},
    {u"self", Axis::Self},
};

struct FunctionRow {
    std::u16string_view name;
    Function function;
    Type type;
    std::size_t fewest;
    std::size_t most;
    bool takesNodes = false;  // The argument has to be nodes.
};

constexpr std::size_t kAnyNumber = 1'000'000;

constexpr FunctionRow kFunctions[] = {
    {u"boolean", Function::Boolean, Type::Boolean, 1, 1},
    {u"ceiling", Function::Ceiling, Type::Number, 1, 1},
    {u"concat", Function::Concat, Type::String, 2, kAnyNumber},
    {u"contains", Function::Contains, Type::Boolean, 2, 2},
    {u"count", Function::Count, Type::Number, 1, 1, true},
    {u"false", Function::False, Type::Boolean, 0, 0},
    {u"floor", Function::Floor, Type::Number, 1, 1},
    {u"id", Function::Id, Type::Nodes, 1, 1},
    {u"lang", Function::Lang, Type::Boolean, 1, 1},
    {u"last", Function::Last, Type::Number, 0, 0},
    {u"local-name", Function::LocalName, Type::String, 0, 1, true},
    {u"name", Function::Name, Type::String, 0, 1, true},
    {u"namespace-uri", Function::NamespaceUri, Type::String, 0, 1, true},
    {u"normalize-space", Function::NormalizeSpace, Type::String, 0, 1},
    {u"not", Function::Not, Type::Boolean, 1, 1},
    {u"number", Function::Number, Type::Number, 0, 1},
    {u"position", Function::Position, Type::Number, 0, 0},
    {u"round", Function::Round, Type::Number, 1, 1},
    {u"starts-with", Function::StartsWith, Type::Boolean, 2, 2},
    {u"string", Function::String, Type::String, 0, 1},
    {u"string-length", Function::StringLength, Type::Number, 0, 1},
    {u"substring", Function::Substring, Type::String, 2, 3},
    {u"substring-after", Function::SubstringAfter, Type::String, 2, 2},
    {u"substring-before", Function::SubstringBefore, Type::String, 2, 2},
    {u"sum", Function::Sum, Type::Number, 1, 1, true},
    {u"translate", Function::Translate, Type::String, 3, 3},
    {u"true", Function::True, Type::Boolean, 0, 0},
};

struct OperatorRow {
    std::u16string_view text;
    Operator op;
    int precedence;
};

// Longer ones before those that they begin with.
constexpr OperatorRow kOperators[] = {
    {u"or", Operator::Or, 0},          {u"and", Operator::And, 1},
    {u"!=", Operator::NotEqual, 2},    {u"=", Operator::Equal, 2},
    {u"<=", Operator::LessOrEqual, 3}, {u">=", Operator::GreaterOrEqual, 3},
    {u"<", Operator::Less, 3},         {u">", Operator::Greater, 3},
    {u"+", Operator::Add, 4},          {u"-", Operator::Subtract, 4},
    {u"*", Operator::Multiply, 5},     {u"div", Operator::Divide, 5},
    {u"mod", Operator::Modulo, 5},
};
constexpr int kPrecedences = 6;
constexpr int kFirstArithmetic = 4;

// Thrown within the parser alone.
struct SyntaxError {};

class Parser {
public:
    explicit Parser(std::u16string_view query) : rest_(query) {}

    Expression parse() {
        Expression result = binary(0);
        skipSpace();
        if (!rest_.empty()) throw SyntaxError();
        return result;
    }

private:
    class Nesting {
    public:
        explicit Nesting(int& depth) : depth_(depth) {
            if (++depth_ > kDeepest) throw SyntaxError();
        }
        ~Nesting() { --depth_; }
        Nesting(const Nesting&) = delete;
        Nesting& operator=(const Nesting&) = delete;

    private:
        int& depth_;
    };

    void skipSpace() {
        while (!rest_.empty() && isWhite(rest_.front()))
            rest_.remove_prefix(1);
    }
    // What comes next, after white space.
    bool sees(std::u16string_view text) {
        skipSpace();
        return rest_.starts_with(text);
    }
    bool takes(std::u16string_view text) {
        if (!sees(text)) return false;
        rest_.remove_prefix(text.size());
        return true;
    }
    void expect(std::u16string_view text) {
        if (!takes(text)) throw SyntaxError();
    }
    std::u16string_view take(std::size_t length) {
        const std::u16string_view taken = rest_.substr(0, length);
        rest_.remove_prefix(length);
        return taken;
    }

    // Where an operator may be, a name is one.
    const OperatorRow* takeOperator(int precedence) {
        skipSpace();
        const std::size_t name = nameLength(rest_);
        for (const OperatorRow& row : kOperators) {
            if (name > 0 ? rest_.substr(0, name) != row.text : !rest_.starts_with(row.text))
                continue;
            if (row.precedence != precedence) return nullptr;
            take(row.text.size());
            return &row;
        }
        return nullptr;
    }

    Expression binary(int precedence) {
        if (precedence == kPrecedences) return unary();
        Expression first = binary(precedence + 1);
        const OperatorRow* row = takeOperator(precedence);
        if (!row) return first;
        Expression chain;
        chain.kind = Expression::Kind::Chain;
        chain.type = precedence >= kFirstArithmetic ? Type::Number : Type::Boolean;
        add(chain, std::move(first));
        for (; row; row = takeOperator(precedence)) {
            chain.operators.push_back(row->op);
            add(chain, binary(precedence + 1));
        }
        return chain;
    }

    static void add(Expression& outer, Expression operand) {
        outer.asksPosition = outer.asksPosition || operand.asksPosition;
        outer.operands.push_back(std::move(operand));
    }

    Expression unary() {
        bool signs = false;
        bool negative = false;
        for (; takes(u"-"); negative = !negative)
            signs = true;
        Expression operand = unionOf();
        if (!signs) return operand;
        // Two signs too make a number of what follows them.
        const int wraps = negative ? 1 : 2;
        for (int i = 0; i < wraps; ++i) {
            Expression negated;
            negated.kind = Expression::Kind::Negate;
            negated.type = Type::Number;
            add(negated, std::move(operand));
            operand = std::move(negated);
        }
        return operand;
    }

    Expression unionOf() {
        Expression first = path();
        if (!sees(u"|")) return first;
        Expression all;
        all.kind = Expression::Kind::Union;
        requireNodes(first);
        add(all, std::move(first));
        while (takes(u"|")) {
            Expression next = path();
            requireNodes(next);
            add(all, std::move(next));
        }
        return all;
    }

    static void requireNodes(const Expression& expression) {
        if (expression.type != Type::Nodes) throw SyntaxError();
    }

    Expression path() {
        skipSpace();
        if (rest_.empty()) throw SyntaxError();
        if (startsPrimary()) return filtered();
        Expression result;
        if (takes(u"//")) {
            result.absolute = true;
            addAnyDepth(result);
            steps(result);
        } else if (takes(u"/")) {
            result.absolute = true;
            if (startsStep()) steps(result);
        } else {
            steps(result);
        }
        return result;
    }

    bool startsPrimary() {
        const char16_t next = rest_.front();
        if (next == u'(' || next == u'"' || next == u'\'') return true;
        if (isDigit(next)) return true;
        if (next == u'.' && rest_.size() > 1 && isDigit(rest_[1])) return true;
        const std::size_t name = nameLength(rest_);
        if (name == 0) return false;
        std::u16string_view after = rest_.substr(name);
        while (!after.empty() && isWhite(after.front()))
            after.remove_prefix(1);
        return after.starts_with(u'(') && !nodeTest(rest_.substr(0, name));
    }

    bool startsStep() {
        skipSpace();
        if (rest_.empty()) return false;
        const char16_t next = rest_.front();
        return next == u'.' || next == u'@' || next == u'*' || nameLength(rest_) > 0;
    }

    static bool isDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

    static std::optional<Test> nodeTest(std::u16string_view name) {
        if (name == u"node") return Test::AnyNode;
        if (name == u"text") return Test::Text;
        if (name == u"comment") return Test::Comment;
        if (name == u"processing-instruction") return Test::Instruction;
        return std::nullopt;
    }

    // A primary expression with predicates and steps after it.
    Expression filtered() {
        Expression inner = primary();
        if (!sees(u"[") && !sees(u"/")) return inner;
        requireNodes(inner);
        Expression result;
        add(result, std::move(inner));
        while (sees(u"["))
            result.predicates.push_back(predicate());
        if (takes(u"//")) {
            addAnyDepth(result);
            steps(result);
        } else if (takes(u"/")) {
            steps(result);
        }
        return result;
    }

    Expression primary() {
        if (takes(u"(")) {
            const Nesting nesting(depth_);
            Expression inner = binary(0);
            expect(u")");
            return inner;
        }
        if (rest_.front() == u'"' || rest_.front() == u'\'') return literal();
        if (nameLength(rest_) > 0) return call();
        return number();
    }

    Expression literal() {
        Expression result;
        result.kind = Expression::Kind::Literal;
        result.type = Type::String;
        result.text = quoted();
        return result;
    }

    std::u16string quoted() {
        const std::size_t end = rest_.find(rest_.front(), 1);
        if (end == rest_.npos) throw SyntaxError();
        std::u16string text(rest_.substr(1, end - 1));
        take(end + 1);
        return text;
    }

    Expression number() {
        std::string digits;
        bool point = false;
        while (!rest_.empty() && (isDigit(rest_.front()) || (!point && rest_.front() == u'.'))) {
            point = point || rest_.front() == u'.';
            digits += static_cast<char>(take(1).front());
        }
        Expression result;
        result.kind = Expression::Kind::Number;
        result.type = Type::Number;
        std::from_chars(digits.data(), digits.data() + digits.size(), result.number,
                        std::chars_format::fixed);
        return result;
    }

    Expression call() {
        const std::u16string_view name = take(nameLength(rest_));
        const auto* row = std::find_if(std::begin(kFunctions), std::end(kFunctions),
                                       [&](const FunctionRow& at) { return at.name == name; });
        if (row == std::end(kFunctions)) throw SyntaxError();
        Expression result;
        result.kind = Expression::Kind::Call;
        result.function = row->function;
        result.type = row->type;
        result.asksPosition =
            row->function == Function::Position || row->function == Function::Last;
        const Nesting nesting(depth_);
        expect(u"(");
        if (!sees(u")")) {
            do {
                add(result, binary(0));
            } while (takes(u","));
        }
        expect(u")");
        const std::size_t arguments = result.operands.size();
        if (arguments < row->fewest || arguments > row->most) throw SyntaxError();
        if (row->takesNodes && arguments > 0) requireNodes(result.operands.front());
        return result;
    }

    Expression predicate() {
        const Nesting nesting(depth_);
        expect(u"[");
        Expression inner = binary(0);
        expect(u"]");
        return inner;
    }

    void steps(Expression& result) {
        addStep(result);
        while (true) {
            if (takes(u"//"))
                addAnyDepth(result);
            else if (!takes(u"/"))
                return;
            addStep(result);
        }
    }

    static void addAnyDepth(Expression& result) {
        Step step;
        step.axis = Axis::DescendantOrSelf;
        result.steps.push_back(std::move(step));
    }

    void addStep(Expression& result) {
        Step step;
        skipSpace();
        if (takes(u"..")) {
            step.axis = Axis::Parent;
        } else if (takes(u".")) {
            step.axis = Axis::Self;
        } else {
            step.axis = axis();
            test(step);
            while (sees(u"[")) {
                step.predicates.push_back(predicate());
                const Expression& added = step.predicates.back();
                step.positional =
                    step.positional || added.asksPosition || added.type == Type::Number;
            }
        }
        // "//name" is looked for in one walk.
        if (step.axis == Axis::Child && !step.positional && !result.steps.empty() &&
            isAnyDepth(result.steps.back())) {
            step.axis = Axis::Descendant;
            result.steps.pop_back();
        }
        result.steps.push_back(std::move(step));
    }

    static bool isAnyDepth(const Step& step) {
        return step.axis == Axis::DescendantOrSelf && step.test == Test::AnyNode &&
               step.predicates.empty();
    }

    Axis axis() {
        if (takes(u"@")) return Axis::Attribute;
        const std::size_t length = nameLength(rest_);
        const std::u16string_view before = rest_;
        const std::u16string_view name = take(length);
        if (length == 0 || !takes(u"::")) {
            rest_ = before;
            return Axis::Child;
        }
        skipSpace();
        const auto* row = std::find_if(std::begin(kAxes), std::end(kAxes),
                                       [&](const auto& at) { return at.first == name; });
        if (row == std::end(kAxes)) throw SyntaxError();
        return row->second;
    }

    void test(Step& step) {
        if (takes(u"*")) {
            step.test = Test::AnyName;
            return;
        }
        const std::size_t length = nameLength(rest_);
        if (length == 0) throw SyntaxError();
        const std::u16string_view name = take(length);
        if (rest_.starts_with(u':')) {
            take(1);
            prefixed(step, name);
            return;
        }
        if (!sees(u"(")) {
            step.test = Test::Name;
            step.name = name;
            return;
        }
        const std::optional<Test> kind = nodeTest(name);
        if (!kind) throw SyntaxError();
        take(1);
        step.test = *kind;
        if (*kind == Test::Instruction && (sees(u"\"") || sees(u"'"))) step.name = quoted();
        expect(u")");
    }

    void prefixed(Step& step, std::u16string_view prefix) {
        step.name = prefix;
        if (rest_.starts_with(u'*')) {
            take(1);
            step.test = Test::AnyOfPrefix;
            return;
        }
        const std::size_t length = nameLength(rest_);
        if (length == 0) throw SyntaxError();
        step.test = Test::Name;
        step.name += u':';
        step.name += take(length);
    }

    std::u16string_view rest_;
    int depth_ = 0;
};

}  // namespace

std::optional<Expression> parseExpression(std::u16string_view query) {
    try {
        return Parser(query).parse();
    } catch (const SyntaxError&) {
        return std::nullopt;
    }
}

}  // namespace corvane::xml::xpath
