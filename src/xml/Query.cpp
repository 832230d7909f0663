#include "xml/Query.h"

#include <algorithm>
#include <span>
#include <utility>

#include "xml/Names.h"
#include "xml/Tree.h"
#include "xml/XPathValue.h"

namespace corvane::xml {
namespace {

using namespace xpath;

constexpr std::size_t kLongestQuery = 1 << 16;
constexpr std::size_t kNoLimit = static_cast<std::size_t>(-1);
// A first match is looked for with a call for each step up to this many.
constexpr std::size_t kMostNested = 64;

std::u16string_view trimmed(std::u16string_view query) {
    while (!query.empty() && isWhite(query.front()))
        query.remove_prefix(1);
    while (!query.empty() && isWhite(query.back()))
        query.remove_suffix(1);
    return query;
}

// From nodes in document order of which none is within another, these axes lead to such nodes
// again.
bool keepsApart(const Step& step) {
    return step.axis == Axis::Child || step.axis == Axis::Attribute || step.axis == Axis::Self;
}

class Evaluator {
public:
    explicit Evaluator(xpath::Tree& tree) : tree_(tree) {}

    Value value(const Expression& expression, const Place& place) {
        switch (expression.kind) {
            case Expression::Kind::Chain:
                return chain(expression, place);
            case Expression::Kind::Negate:
                return Value::of(-toNumber(tree_, value(expression.operands.front(), place)));
            case Expression::Kind::Union:
                return Value::of(unionOf(expression, place));
            case Expression::Kind::Literal:
                return Value::of(expression.text);
            case Expression::Kind::Number:
                return Value::of(expression.number);
            case Expression::Kind::Call:
                return call(expression, place);
            default:
                return Value::of(nodes(expression, place, kNoLimit));
        }
    }

    // The nodes of a path; no more than the limit asks for, where that spares work.
    Items nodes(const Expression& path, const Place& place, std::size_t limit) {
        Items items{path.absolute ? Item{&tree_.root()} : place.item};
        if (!path.operands.empty()) {
            items = value(path.operands.front(), place).items;
            for (const Expression& predicate : path.predicates)
                filter(items, predicate);
        }
        const bool areApart = std::all_of(path.steps.begin(), path.steps.end(), keepsApart);
        if (limit == 1 && areApart && items.size() == 1 && path.steps.size() <= kMostNested)
            return firstOf(items.front(), path.steps);
        bool apart = items.size() < 2;
        for (const Step& step : path.steps) {
            apart = apart && keepsApart(step);
            items = after(std::move(items), step, apart,
                          &step == &path.steps.back() ? limit : kNoLimit);
        }
        return items;
    }

private:
    // The first node of a path, at most. Each node is followed to the end of the path before the
    // next one is looked at, so that the search ends with the first match.
    Items firstOf(const Item& context, std::span<const Step> steps) {
        if (steps.empty()) return {context};
        Items first;
        const auto follow = [&](const Item& item) {
            first = firstOf(item, steps.subspan(1));
            return first.empty();
        };
        const Step& step = steps.front();
        if (step.positional) {
            const Items found = placesOf(context, step);
            static_cast<void>(std::all_of(found.begin(), found.end(), follow));
        } else {
            tree_.walk(context, step,
                       [&](const Item& item) { return !meetsAll(item, step) || follow(item); });
        }
        return first;
    }

    Value chain(const Expression& expression, const Place& place) {
        const std::vector<Expression>& operands = expression.operands;
        const Operator first = expression.operators.front();
        if (first == Operator::Or || first == Operator::And) {
            const bool decides = first == Operator::Or;
            return Value::of(
                std::any_of(operands.begin(), operands.end(), [&](const Expression& operand) {
                    return toBoolean(value(operand, place)) == decides;
                }) == decides);
        }
        Value result = value(operands.front(), place);
        for (std::size_t i = 0; i < expression.operators.size(); ++i)
            result = applied(tree_, expression.operators[i], result, value(operands[i + 1], place));
        return result;
    }

    Items unionOf(const Expression& expression, const Place& place) {
        Items all;
        for (const Expression& operand : expression.operands) {
            const Items items = value(operand, place).items;
            all.insert(all.end(), items.begin(), items.end());
        }
        tree_.sort(all);
        return all;
    }

    Value call(const Expression& expression, const Place& place) {
        std::vector<Value> arguments;
        for (const Expression& operand : expression.operands)
            arguments.push_back(value(operand, place));
        return called(tree_, expression.function, arguments, place);
    }

    bool holds(const Expression& predicate, const Place& place) {
        tree_.count(1);
        const Value result = value(predicate, place);
        return result.type == Type::Number ? result.number == static_cast<double>(place.position)
                                           : toBoolean(result);
    }

    void filter(Items& items, const Expression& predicate) {
        Items left;
        for (std::size_t i = 0; i < items.size(); ++i) {
            if (holds(predicate, {items[i], i + 1, items.size()})) left.push_back(items[i]);
        }
        items = std::move(left);
    }

    bool meetsAll(const Item& item, const Step& step) {
        return std::all_of(step.predicates.begin(), step.predicates.end(),
                           [&](const Expression& predicate) {
                               return holds(predicate, {item, 1, 1});
                           });
    }

    // `apart` tells that what is found is in document order as it is.
    Items after(Items contexts, const Step& step, bool apart, std::size_t limit) {
        if (step.positional) return afterByPlace(contexts, step, apart);
        contexts = tree_.covering(std::move(contexts), step.axis);
        const bool one = contexts.size() == 1;
        Items found;
        for (const Item& context : contexts) {
            tree_.walk(context, step, [&](const Item& item) {
                if (meetsAll(item, step)) found.push_back(item);
                return !one || isReverse(step.axis) || found.size() < limit;
            });
        }
        if (one && isReverse(step.axis))
            std::reverse(found.begin(), found.end());
        else if (!one && !apart)
            tree_.sort(found);
        return found;
    }

    // Where predicates count, each context node has a count of its own.
    Items afterByPlace(const Items& contexts, const Step& step, bool apart) {
        if (contexts.size() == 1) return placesOf(contexts.front(), step);
        Items all;
        for (const Item& context : contexts) {
            const Items found = placesOf(context, step);
            all.insert(all.end(), found.begin(), found.end());
        }
        if (!apart) tree_.sort(all);
        return all;
    }

    Items placesOf(const Item& context, const Step& step) {
        const std::size_t enough = enoughFor(step);
        Items found;
        tree_.walk(context, step, [&](const Item& item) {
            found.push_back(item);
            return found.size() < enough;
        });
        for (const Expression& predicate : step.predicates)
            filter(found, predicate);
        if (isReverse(step.axis)) std::reverse(found.begin(), found.end());
        return found;
    }

    // How many nodes a first predicate that is a plain number has to see.
    static std::size_t enoughFor(const Step& step) {
        const Expression& first = step.predicates.front();
        if (first.kind != Expression::Kind::Number) return kNoLimit;
        if (!(first.number >= 1)) return 1;
        return first.number < 1e9 ? static_cast<std::size_t>(first.number) : kNoLimit;
    }

    xpath::Tree& tree_;
};

std::optional<Matches> evaluate(const Element& context, std::u16string_view query,
                                std::size_t limit) {
    if (query.size() > kLongestQuery || !isCarriable(query)) return std::nullopt;
    const std::optional<Expression> expression = parseExpression(query);
    if (!expression || expression->type != Type::Nodes) return std::nullopt;
    try {
        xpath::Tree tree(context);
        Evaluator evaluator(tree);
        const Place place{Item{&context}};
        const Items items = expression->kind == Expression::Kind::Path
                                ? evaluator.nodes(*expression, place, limit)
                                : evaluator.value(*expression, place).items;
        Matches matches;
        for (const Item& item : items) {
            const bool isElement = item.kind == Item::Kind::Node && item.node->isElement();
            matches.push_back(isElement ? item.node : nullptr);
            if (matches.size() == limit) break;
        }
        return matches;
    } catch (const TooManySteps&) {
        return std::nullopt;
    }
}

}  // namespace

std::optional<Matches> select(const Element& context, std::u16string_view query) {
    const std::u16string_view name = trimmed(query);
    if (!isQualifiedName(name)) return evaluate(context, query, kNoLimit);
    Matches matches;
    for (const Element* at = elementFrom(context.firstChild(), name); at;
         at = elementFrom(at->next, name))
        matches.push_back(at);
    return matches;
}

std::optional<Matches> selectFirst(const Element& context, std::u16string_view query) {
    const std::u16string_view name = trimmed(query);
    if (!isQualifiedName(name)) return evaluate(context, query, 1);
    const Element* first = elementFrom(context.firstChild(), name);
    return first ? Matches{first} : Matches{};
}

}  // namespace corvane::xml
