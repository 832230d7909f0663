#pragma once

#include <corvane/app/StringResources.h>
#include <corvane/app/StringTable.h>

namespace corvane::resources {

using namespace corvane::resource;

inline constexpr StringTableEntry kMessages[] = {
    {kScriptCaption, u"Script rule"},
    {kScriptFailed, u"The script of the rule \"%s\" failed."},
    {kScriptMissing, u"The rule \"%s\" cannot be checked: the script file of \"%s\" is missing."},
    {kErrorSource, u"Source"},
    {kErrorLine, u"Line"},
    {kErrorNumber, u"Error number"},
    {kErrorCode, u"Status code"},
    {kNewRuleName, u"New rule"},
    {kNewRuleDescription, u"User-defined rule"},
    {kIllegalParameter, u"A parameter has an illegal type."},
};

inline constexpr StringTableEntry kCategories[] = {
    {69, u"Assembly"},         {72, u"Additive manufacturing"},
    {3012, u"Sheet metal"},    {3013, u"General"},
    {3014, u"Milling"},        {3015, u"Turning"},
    {3016, u"Drilling"},       {3017, u"Injection moulding"},
    {3018, u"Other"},          {3021, u"Drawing"},
    {3032, u"Forging"},        {3033, u"Welding"},
    {3038, u"Casting"},        {3046, u"Extrusion"},
    {3047, u"Tube bending"},   {3048, u"Surface treatment"},
    {3049, u"Heat treatment"}, {3050, u"Tolerances"},
    {3051, u"Material"},
};

}  // namespace corvane::resources
