#pragma once

#include <cstdint>

// Numbers that describe a parameter. They are written to rule files and pass between separately
// built modules, so they never change. Each type holds any 32-bit number, since rule modules give
// meaning to numbers that this library only passes on.

/// The kind of a parameter: which instantiation of CQorParameter it is. Any other number is
/// illegal; 0 is what a storage holds before its kind is set.
enum Type_e : std::int32_t {
    Type_Int = 1,              ///< int
    Type_Long = 2,             ///< QorLong
    Type_Bool = 3,             ///< bool
    Type_Double = 4,           ///< double
    Type_CStringPtr = 5,       ///< CStringW*, owned by the parameter's storage
    Type_COleDateTimePtr = 6,  ///< COleDateTime*, owned by the parameter's storage
    Type_ColorRef = 7,         ///< QorULong, a colour
    Type_CustomRuleData = 8,   ///< QORCustomRuleData*, owned by the parameter's storage
};

/// The operator of a parameter. Only these four have a role in the library.
enum QorOperator_e : std::int32_t {
    QorOperator_NotSaved = 0,  ///< Left out when a rule or a constraint writes its parameters.
    QorOperator_Grouped = 1,   ///< Values in pairs or triples: writing drops any other count.
    QorOperator_Default = 2,   ///< What a parameter starts with.
    QorOperator_Hidden = 12,   ///< Left out in writing, like 0.
};

/// The parameter type. Every number but 24 has its values in element texts.
enum QorParamType_e : std::int32_t {
    QorParamType_Plain = 0,        ///< What a parameter starts with.
    QorParamType_Attributes = 24,  ///< Values are in attributes of their elements.
};
