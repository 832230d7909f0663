#include "scriptrules/ScriptParameters.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

#include "rules/NumberText.h"
#include "rules/Storages.h"

namespace corvane::scriptrules {
namespace {

using Texts = std::vector<CStringW>;
using Values = std::vector<ScriptValue>;

// The kind that a parameter type says; nothing where the texts tell it.
std::optional<Type_e> kindOf(QorParamType_e type, bool& isList) {
    isList = type > kListOffset && type <= kListOffset + Type_CStringPtr;
    const int kind = isList ? type - kListOffset : type;
    if (kind < Type_Int || kind > Type_CStringPtr) return std::nullopt;
    return Type_e(kind);
}

template <typename Number>
std::optional<ScriptValue> numberIn(std::u16string_view text) {
    return rules::wholeNumber<Number>(text);
}

std::optional<ScriptValue> wordIn(std::u16string_view text) {
    if (text == u"true") return true;
    if (text == u"false") return false;
    return std::nullopt;
}

std::optional<ScriptValue> flagIn(std::u16string_view text) {
    if (text == u"1") return true;
    if (text == u"0") return false;
    return wordIn(text);
}

// All texts as values of one kind; nothing when one of them is of another.
template <typename Read>
std::optional<Values> readAll(const Texts& texts, Read read) {
    Values values;
    for (const CStringW& text : texts) {
        const std::optional<ScriptValue> value = read(text.View());
        if (!value) return std::nullopt;
        values.push_back(*value);
    }
    return values;
}

// A limit that is misspelt stays a text, on which the script fails. A number in its place would
// have the script check against a limit that nobody wrote.
Values valuesOf(const Texts& texts, std::optional<Type_e> kind) {
    std::optional<Values> values;
    const bool whole = kind == Type_Int || kind == Type_Long;
    if (!kind || whole) values = readAll(texts, numberIn<std::int64_t>);
    if (!values && (!kind || kind == Type_Double)) values = readAll(texts, numberIn<double>);
    if (!values && kind == Type_Bool) values = readAll(texts, flagIn);
    if (!values && !kind) values = readAll(texts, wordIn);
    return values ? std::move(*values) : Values(texts.begin(), texts.end());
}

template <typename T>
ScriptValue valueOf(const T& value) {
    if constexpr (std::is_same_v<T, bool> || std::is_same_v<T, double>) {
        return value;
    } else {
        return static_cast<std::int64_t>(value);
    }
}

template <typename T>
Values valuesOf(const CQorParameter<T>& parameter, std::optional<Type_e> kind) {
    Values values;
    if constexpr (std::is_same_v<T, CStringW*>) {
        Texts texts;
        for (const CStringW* const text : parameter.m_Values)
            texts.push_back(text ? *text : CStringW());
        values = valuesOf(texts, kind);
    } else if constexpr (!kClonedValue<T>) {
        for (const T& value : parameter.m_Values)
            values.push_back(valueOf(value));
    }
    return values;
}

bool isLetterOrDigit(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') ||
           (unit >= u'0' && unit <= u'9');
}

// The name as an identifier of a script: what cannot be in one becomes one "_" between words.
CStringW identifier(const CStringW& name, QorLong number) {
    std::u16string text;
    bool gap = false;
    for (const char16_t unit : name.View()) {
        const bool kept = isLetterOrDigit(unit) || unit == u'_';
        if (kept && gap && !text.empty()) text += u'_';
        if (kept) text += unit;
        gap = !kept;
    }
    if (text.empty()) return u"p" + CQorDataTypeConverter().ValueToText(number);
    if (text.front() >= u'0' && text.front() <= u'9') text.insert(text.begin(), u'_');
    return CStringW(std::move(text));
}

// Where one parameter comes from: its definition, and the storage that has its values, which is a
// constraint's when one for the material has any.
struct Source {
    const CQorParamStorage* definition;
    const CQorParamStorage* values;
    bool settled;  // no constraint comes any more
};

std::vector<Source> sourcesFor(const CQorArray<CQorParamStorage*>& parameters,
                               const CQorArray<CQORConstraint*>& constraints,
                               const CStringW& material) {
    std::vector<Source> sources;
    std::map<QorLong, std::size_t> places;
    const auto sourceOf = [&](const CQorParamStorage* storage) -> Source& {
        const auto [place, isNew] = places.try_emplace(storage->m_lId, sources.size());
        if (isNew) sources.push_back({storage, storage, false});
        return sources[place->second];
    };
    for (const CQorParamStorage* const storage : parameters) {
        if (storage && storage->m_pParameter) sourceOf(storage);
    }
    for (const CQORConstraint* const constraint : constraints) {
        if (!rules::meets(constraint, material)) continue;
        for (const CQorParamStorage* const storage : constraint->m_Parameters) {
            if (!storage || !storage->m_pParameter) continue;
            Source& source = sourceOf(storage);
            if (!std::exchange(source.settled, true)) source.values = storage;
        }
    }
    return sources;
}

// Nothing for a parameter that is off, and for a single value that is not there.
std::optional<ScriptParameter> parameterOf(const Source& source, const std::set<QorLong>& lists) {
    ScriptParameter made;
    made.number = source.definition->m_lId;
    made.isList = lists.contains(made.number);
    std::optional<Type_e> kind;
    bool on = true;
    // What the values' own element says of their kind comes first.
    for (const CQorParamStorage* const storage : {source.values, source.definition}) {
        rules::visitParameter(storage, [&](const auto& parameter) {
            bool isList = false;
            const auto said = kindOf(parameter.m_ParamType, isList);
            if (!kind) kind = said;
            made.isList = made.isList || isList || parameter.m_Operator == QorOperator_Grouped;
            made.name = identifier(parameter.m_csName, made.number);
        });
    }
    rules::visitParameter(source.values, [&](const auto& parameter) {
        on = parameter.m_bStatus && parameter.m_ParamType != QorParamType_Attributes;
        made.values = valuesOf(parameter, kind);
    });
    made.isList = made.isList || made.values.size() > 1;
    if (!on || (!made.isList && made.values.empty())) return std::nullopt;
    return made;
}

}  // namespace

std::vector<ScriptParameter> scriptParameters(const CQorArray<CQorParamStorage*>& parameters,
                                              const CQorArray<CQORConstraint*>& constraints,
                                              const CStringW& material,
                                              const std::set<QorLong>& lists) {
    std::vector<ScriptParameter> all;
    std::set<CStringW> names;
    for (const Source& source : sourcesFor(parameters, constraints, material)) {
        std::optional<ScriptParameter> parameter = parameterOf(source, lists);
        if (!parameter) continue;
        while (!names.insert(parameter->name).second)
            parameter->name.AppendFormat(u"_%d", parameter->number);
        all.push_back(std::move(*parameter));
    }
    return all;
}

}  // namespace corvane::scriptrules
