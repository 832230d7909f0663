#pragma once

#include <corvane/base/Export.h>
#include <corvane/text/CStringList.h>
#include <corvane/text/CStringW.h>

/// Small services around rules. Objects have no fields.
class CORVANE_EXPORT CQORFrameWrkUtils {
public:
    CQORFrameWrkUtils() = default;
    CQORFrameWrkUtils(const CQORFrameWrkUtils&) = default;
    CQORFrameWrkUtils& operator=(const CQORFrameWrkUtils&);

    /// Appends the ten category texts that a user may choose from, in the user's language and in
    /// the order in which they are shown. What the list already holds stays first.
    static void GetRuleCategoryStringList(CStringList& categories);

    /// The element name made from a rule's name: "QORRule_" and the name without
    /// blanks, "/", "(" and ")". Other characters stay, so the result is not always an XML name.
    static CStringW GetStringWithoutSpaces(CStringW text);
};
