#include <algorithm>
#include <cmath>
#include <numeric>
#include <unordered_map>
#include <unordered_set>

#include "system/Unicode.h"
#include "xml/Attributes.h"
#include "xml/Names.h"
#include "xml/Namespaces.h"
#include "xml/Tree.h"
#include "xml/XPathValue.h"

namespace corvane::xml::xpath {
namespace {

// The characters of a text; half a surrogate pair is one of its own.
std::u32string charactersOf(std::u16string_view text) {
    std::u32string characters;
    while (!text.empty())
        characters += takeCodePoint(text);
    return characters;
}

void append(std::u16string& text, char32_t character) {
    if (character < 0x10000) {
        text += static_cast<char16_t>(character);
        return;
    }
    character -= 0x10000;
    text += static_cast<char16_t>(0xD800 + (character >> 10));
    text += static_cast<char16_t>(0xDC00 + (character & 0x3FF));
}

double rounded(double number) {
    return std::floor(number + 0.5);
}

std::u16string substring(std::u16string_view text, double start, double end) {
    std::u16string result;
    double position = 1;
    for (const char32_t character : charactersOf(text)) {
        if (position >= start && position < end) append(result, character);
        ++position;
    }
    return result;
}

std::u16string translate(std::u16string_view text, std::u16string_view from,
                         std::u16string_view to) {
    const std::u32string sources = charactersOf(from);
    const std::u32string targets = charactersOf(to);
    std::unordered_map<char32_t, std::size_t> places;
    for (std::size_t i = 0; i < sources.size(); ++i)
        places.emplace(sources[i], i);
    std::u16string result;
    for (const char32_t character : charactersOf(text)) {
        const auto found = places.find(character);
        if (found == places.end())
            append(result, character);
        else if (found->second < targets.size())
            append(result, targets[found->second]);
    }
    return result;
}

// The words of a text.
std::vector<std::u16string_view> words(std::u16string_view text) {
    std::vector<std::u16string_view> found;
    std::size_t start = 0;
    for (std::size_t i = 0; i <= text.size(); ++i) {
        if (i < text.size() && !isWhite(text[i])) continue;
        if (i > start) found.push_back(text.substr(start, i - start));
        start = i + 1;
    }
    return found;
}

std::u16string normalized(std::u16string_view text) {
    std::u16string result;
    for (const std::u16string_view word : words(text)) {
        if (!result.empty()) result += u' ';
        result += word;
    }
    return result;
}

std::u16string_view nameOf(const Item& item) {
    if (item.kind == Item::Kind::Attribute) return item.attribute->name->view();
    if (item.kind == Item::Kind::Namespace) {
        if (!item.attribute) return u"xml";
        return prefixOf(item.attribute->name->view()).empty() ? std::u16string_view()
                                                              : item.attribute->name->local();
    }
    if (item.node->isElement()) return asElement(item.node)->name->view();
    if (item.node->kind == Kind::Instruction) return targetOf(*item.node);
    return {};
}

std::u16string_view namespaceOfName(const Item& item) {
    if (item.kind == Item::Kind::Namespace || !item.node->isElement()) return {};
    const std::u16string_view prefix = prefixOf(nameOf(item));
    if (item.kind == Item::Kind::Attribute && prefix.empty()) return {};
    return namespaceOf(*asElement(item.node), prefix);
}

// The language in force at a node.
bool isLanguage(Tree& tree, const Item& item, std::u16string_view wanted) {
    const Node* at = item.node;
    for (; at; at = at->parent) {
        tree.count(1);
        const Attribute* language =
            at->isElement() ? findAttribute(*asElement(at), u"xml:lang") : nullptr;
        if (!language) continue;
        const std::u16string_view value = language->value();
        if (value.size() < wanted.size()) return false;
        return system::compareNoCase(value.substr(0, wanted.size()), wanted) == 0 &&
               (value.size() == wanted.size() || value[wanted.size()] == u'-');
    }
    return false;
}

Items identified(Tree& tree, const Value& argument) {
    std::u16string text;
    if (argument.type == Type::Nodes) {
        for (const Item& item : argument.items)
            text += u' ' + tree.stringOf(item);
    } else {
        text = toText(tree, argument);
    }
    const std::vector<std::u16string_view> list = words(text);
    std::unordered_set<std::u16string_view> wanted(list.begin(), list.end());
    Items found;
    const Node* at = &tree.root();
    for (; at && !wanted.empty(); at = following(at, &tree.root())) {
        tree.count(1);
        const Attribute* id = at->isElement() ? findAttribute(*asElement(at), u"xml:id") : nullptr;
        // The first element of an identifier has it.
        if (id && wanted.erase(id->value()) > 0) found.push_back(Item{at});
    }
    return found;
}

// A call: its arguments, or what stands for them when there are none.
class Call {
public:
    Call(Tree& tree, const std::vector<Value>& arguments, const Place& place)
        : tree_(tree), arguments_(arguments), place_(place) {}

    std::u16string text(std::size_t index) const {
        std::u16string text = index < arguments_.size() ? toText(tree_, arguments_[index])
                                                        : tree_.stringOf(place_.item);
        tree_.count(text.size() / 2);
        return text;
    }
    double number(std::size_t index) const {
        return index < arguments_.size() ? toNumber(tree_, arguments_[index])
                                         : numberOf(text(index));
    }
    // The first node of the argument, or the context node.
    const Item* item() const {
        if (arguments_.empty()) return &place_.item;
        const Items& items = arguments_.front().items;
        return items.empty() ? nullptr : &items.front();
    }
    const Value& argument() const { return arguments_.front(); }
    std::size_t size() const { return arguments_.size(); }

private:
    Tree& tree_;
    const std::vector<Value>& arguments_;
    const Place& place_;
};

std::u16string concatenated(const Call& call) {
    std::u16string text;
    for (std::size_t i = 0; i < call.size(); ++i)
        text += call.text(i);
    return text;
}

double sum(Tree& tree, const Items& items) {
    return std::accumulate(items.begin(), items.end(), 0.0, [&](double total, const Item& item) {
        return total + numberOf(tree.stringOf(item));
    });
}

std::u16string part(const Call& call, bool before) {
    const std::u16string text = call.text(0);
    const std::u16string mark = call.text(1);
    const std::size_t at = text.find(mark);
    if (at == text.npos) return {};
    return before ? text.substr(0, at) : text.substr(at + mark.size());
}

std::u16string substringOf(const Call& call) {
    const double start = rounded(call.number(1));
    const double end = call.size() > 2 ? start + rounded(call.number(2)) : INFINITY;
    return substring(call.text(0), start, end);
}

Value nameCall(Function function, const Call& call) {
    const Item* item = call.item();
    if (!item) return Value::of(std::u16string());
    if (function == Function::NamespaceUri)
        return Value::of(std::u16string(namespaceOfName(*item)));
    const std::u16string_view name = nameOf(*item);
    return Value::of(std::u16string(function == Function::Name ? name : localNameOf(name)));
}

}  // namespace

Value called(Tree& tree, Function function, const std::vector<Value>& arguments,
             const Place& place) {
    const Call call(tree, arguments, place);
    switch (function) {
        case Function::True:
        case Function::False:
            return Value::of(function == Function::True);
        case Function::Boolean:
        case Function::Not:
            return Value::of(toBoolean(call.argument()) == (function == Function::Boolean));
        case Function::Last:
            return Value::of(static_cast<double>(place.size));
        case Function::Position:
            return Value::of(static_cast<double>(place.position));
        case Function::Count:
            return Value::of(static_cast<double>(call.argument().items.size()));
        case Function::Sum:
            return Value::of(sum(tree, call.argument().items));
        case Function::Id:
            return Value::of(identified(tree, call.argument()));
        case Function::Lang:
            return Value::of(isLanguage(tree, place.item, call.text(0)));
        case Function::Name:
        case Function::LocalName:
        case Function::NamespaceUri:
            return nameCall(function, call);
        case Function::Number:
            return Value::of(call.number(0));
        case Function::Floor:
            return Value::of(std::floor(call.number(0)));
        case Function::Ceiling:
            return Value::of(std::ceil(call.number(0)));
        case Function::Round:
            return Value::of(rounded(call.number(0)));
        case Function::String:
            return Value::of(call.text(0));
        case Function::StringLength:
            return Value::of(static_cast<double>(charactersOf(call.text(0)).size()));
        case Function::Concat:
            return Value::of(concatenated(call));
        case Function::Contains:
            return Value::of(call.text(0).find(call.text(1)) != std::u16string::npos);
        case Function::StartsWith:
            return Value::of(call.text(0).starts_with(call.text(1)));
        case Function::SubstringBefore:
            return Value::of(part(call, true));
        case Function::SubstringAfter:
            return Value::of(part(call, false));
        case Function::Substring:
            return Value::of(substringOf(call));
        case Function::NormalizeSpace:
            return Value::of(normalized(call.text(0)));
        case Function::Translate:
            return Value::of(translate(call.text(0), call.text(1), call.text(2)));
    }
    return {};
}

}  // namespace corvane::xml::xpath
