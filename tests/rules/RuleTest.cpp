#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <utility>

#include <corvane/app/StringTable.h>
#include <corvane/rules/CConcreteFailedRule.h>
#include <corvane/rules/CQORFrameWrkUtils.h>

#include "AnyRule.h"
#include "support/MessageRecorder.h"
#include "support/Text.h"

namespace {

QORCustomRuleData* newRecord(const char16_t* first, const char16_t* second) {
    auto record = std::make_unique<QORCustomRuleData>();
    record->Add(first);
    if (second) record->Add(second);
    return record.release();
}

TEST(RuleArray, GrowsInItsStepsAndStartsAnewAfterReset) {
    CQorArray<int> array;
    std::vector<int> capacities{array.m_nCapacity};
    for (int i = 0; i < 90; ++i) {
        array.Add(i);
        if (array.m_nCapacity != capacities.back()) capacities.push_back(array.m_nCapacity);
    }
    EXPECT_EQ(capacities, (std::vector{10, 11, 15, 22, 32, 44, 58, 74, 93}));
    EXPECT_FALSE(array.RemoveAt(90));
    EXPECT_TRUE(array.RemoveAt(0));
    const CQorArray<int> copy(array = *&array);
    array.Reset();
    EXPECT_EQ(copy.GetAt(88), 89);
    EXPECT_EQ(copy.m_nCapacity, 93);
    EXPECT_EQ(copy.m_nGrowBy, 22);
    EXPECT_EQ(array.m_nCapacity, 10);
    EXPECT_EQ(array.m_nGrowBy, 1);
    EXPECT_EQ(array.GetSize(), 0);
    EXPECT_EQ(array.GetAt(9), 0);
}

// A buffer on the stack: freeing it would end the process.
TEST(RuleArray, LeavesABufferAloneThatAModuleKeepsForItself) {
    int lent[] = {7, 8};
    const auto lend = [&lent](CQorArray<int>& array) {
        array.Reset();
        delete[] std::exchange(array.m_pData, lent);
        array.m_nCount = 1;
        array.m_nCapacity = 0;
    };
    CQorArray<int> array;
    lend(array);
    const CQorArray<int> copy(array);
    EXPECT_EQ(copy.GetAt(0), 7);
    array = CQorArray<int>();
    lend(array);
    array.Add(9);
    EXPECT_EQ(array.GetAt(0), 7);
    EXPECT_EQ(array.GetAt(1), 9);
    lend(array);
    array.Reset();
    lend(array);
    EXPECT_EQ(lent[1], 8);
}

TEST(RuleParameter, IsFoundByNumberAndNamedByTheTableOfTheRuleModule) {
    const corvane::StringTableEntry entries[] = {{5, u"Minimum wall"}, {3000, u"Own"}};
    const corvane::StringTable table{entries, 2};
    const corvane::StringTableScope scope(table);
    AnyRule rule;
    rule.m_Parameters.Add(nullptr);
    const auto& first = rule.add<int>(Type_Int, 5);
    EXPECT_EQ(rule.add<double>(Type_Double, 3000).m_csName, u"Own");
    EXPECT_EQ(rule.add<double>(Type_Double, 5).m_csName, u"Minimum wall");
    EXPECT_EQ(rule.add<QorULong>(Type_ColorRef, -7).m_csName, u"");
    EXPECT_EQ(std::as_const(rule).GetIntItem(5), &first);
    EXPECT_EQ(rule.GetDoubleItem(5), nullptr);
    EXPECT_EQ(rule.FindParameterInArray(6), nullptr);
}

// Long lists are indexed after some look-ups; what a module then does to the list counts at once.
TEST(RuleParameter, IsTheFirstOfItsNumberWhateverAModuleDoesToTheList) {
    constexpr int kCount = 900;
    AnyRule rule;
    auto& list = rule.m_Parameters;
    const auto make = [&rule](QorLong id) {
        return rule.CreateParamStorageObject(Type_Int, id, QorOperator_Default, QorParamType_Plain,
                                             true, false);
    };
    // The number that tells most comes first: a look-up that notices a change hides it from others.
    const auto expectFirst = [&](const char* what, QorLong number) {
        SCOPED_TRACE(what);
        for (QorLong i = 0; i <= 2 * kCount; ++i) {
            const QorLong id = (number + i) % (kCount + 1);
            const auto first = std::find_if(list.begin(), list.end(),
                                            [id](const auto* s) { return s && s->m_lId == id; });
            ASSERT_EQ(rule.FindParameterInArray(id), first == list.end() ? nullptr : *first);
        }
    };
    for (int i = 0; i < kCount; ++i)
        list.Add(make(i < 850 ? i : i < 870 ? i - 850 : i - 270));
    expectFirst("some numbers twice", 0);
    list.Add(make(kCount));
    expectFirst("one more", kCount);
    std::swap(list.GetAt(3), list.GetAt(853));
    expectFirst("two of a number in each other's place", 3);
    std::swap(list.GetAt(550), list.GetAt(880));
    expectFirst("the second of a number before the first", 610);
    std::swap(list.GetAt(700), list.GetAt(702));
    expectFirst("two in each other's place", 700);
    delete std::exchange(list.GetAt(7), nullptr);
    expectFirst("a null one", 7);
    delete list.GetAt(600);
    list.GetAt(600) = make(800);
    expectFirst("a new one, maybe at the address of one that is gone", 800);
    const std::unique_ptr<CQorParamStorage> taken(std::exchange(list.GetAt(650), make(810)));
    expectFirst("a new one, and none gone", 810);
    void* const own = list.GetAt(640)->m_pParameter;
    *list.GetAt(640) = *list.GetAt(820);
    list.GetAt(640)->m_pParameter = own;
    expectFirst("another number taken over", 820);
    delete list.GetAt(50);
    list.RemoveAt(50);
    expectFirst("one fewer", 51);
    std::reverse(list.begin(), list.end());
    expectFirst("the same in the other order", 610);
    list.GetAt(20)->m_lId = kCount - 1;
    expectFirst("another number", 20);
}

// Twice, and with nulls and scalars, so that what is shared or lost shows under the sanitizer.
TEST(RuleParameter, AssignmentClonesWhatPointersPointTo) {
    AnyRule source;
    AnyRule target;
    auto& texts = source.add<CStringW*>(Type_CStringPtr, 1, {new CStringW(u"Steel"), nullptr});
    auto& textCopy = target.add(Type_CStringPtr, 2, {new CStringW(u"old")});
    source.add<COleDateTime*>(Type_COleDateTimePtr, 3, {new COleDateTime(2.5), nullptr});
    auto& dateCopy = target.add<COleDateTime*>(Type_COleDateTimePtr, 3);
    CStringW scalar(u"scalar");
    texts.m_Scalar = &scalar;
    dateCopy.m_Scalar = new COleDateTime(1.0);
    for (int round = 0; round < 2; ++round)
        target = &source;
    *texts.m_Values.GetAt(0) = scalar = u"changed";
    EXPECT_EQ(*textCopy.m_Values.GetAt(0), u"Steel");
    EXPECT_EQ(*textCopy.m_Scalar, u"scalar");
    EXPECT_EQ(textCopy.m_Values.GetAt(1), nullptr);
    EXPECT_EQ(textCopy.m_lType, 2);
    EXPECT_EQ(*dateCopy.m_Values.GetAt(0), COleDateTime(2.5));
    EXPECT_EQ(dateCopy.m_Scalar, nullptr);
}

// Says whether the update of a parameter from another tells a difference; it copies in any case.
template <typename T>
bool updateTells(Type_e type, std::initializer_list<T> own, std::initializer_list<T> other,
                 int otherOp = 2) {
    AnyRule source;
    AnyRule target;
    source.add<T>(type, 1, own).m_csRemarks = u"moved";
    const auto& updated = target.add<T>(type, 1, other, otherOp);
    const bool differs = source.UpdateRule(&target);
    EXPECT_EQ(updated.m_csRemarks == u"moved", type != Type_Bool && type != Type_COleDateTimePtr);
    return differs;
}

TEST(RuleParameter, UpdateTellsWhetherTheTargetDiffered) {
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    const auto text = [](const char16_t* content) { return new CStringW(content); };
    EXPECT_FALSE(updateTells(Type_Int, {1, 2}, {1, 2}));
    EXPECT_TRUE(updateTells(Type_Int, {1, 2}, {1, 3}));
    EXPECT_TRUE(updateTells(Type_Int, {1}, {1}, QorOperator_Grouped));
    EXPECT_TRUE(updateTells<QorLong>(Type_Long, {1}, {}));
    EXPECT_TRUE(updateTells(Type_Double, {kNaN}, {kNaN}));
    EXPECT_TRUE(updateTells(Type_CStringPtr, {text(u"a")}, {text(u"A")}));
    EXPECT_TRUE(updateTells<CStringW*>(Type_CStringPtr, {nullptr}, {text(u"")}));
    EXPECT_FALSE(updateTells<CStringW*>(Type_CStringPtr, {nullptr}, {nullptr}));
    EXPECT_FALSE(updateTells(Type_CustomRuleData, {newRecord(u"a", u"b")}, {newRecord(u"", u"")}));
    EXPECT_TRUE(updateTells(Type_CustomRuleData, {newRecord(u"a", u"b")}, {newRecord(u"a", {})}));
    EXPECT_FALSE(updateTells(Type_Bool, {true}, {false}));
    EXPECT_FALSE(updateTells<COleDateTime*>(Type_COleDateTimePtr, {nullptr}, {}));
}

TEST(Rule, AssignmentAndUpdatePassOverWhatHasNoCounterpart) {
    AnyRule source;
    AnyRule target;
    source.add(Type_Int, 1, {1});
    source.m_Parameters.Add(nullptr);
    const auto& other = target.add(Type_Double, 1, {4.0});
    target.m_Parameters.Add(nullptr);
    target.add(Type_Int, 3, {5});
    const MessageRecorder messages;
    target = &source;
    source.m_csRuleName = u"Renamed";
    EXPECT_FALSE(source.UpdateRule(&target));
    EXPECT_EQ(target.m_csRuleName, u"Renamed");
    EXPECT_EQ(valuesOf(other), std::vector{4.0});
    EXPECT_EQ(messages.shown.size(), 2U);
}

// The fields of each type, in one order for a rule to write and to read.
template <typename R>
auto textsOf(R& rule) {
    return std::array{
        &rule.m_csRuleName,     &rule.m_csRuleDisplayName,     &rule.m_csRuleDescription,
        &rule.m_csRuleSource,   &rule.m_csRuleCategory,        &rule.m_csRuleModuleName,
        &rule.m_csRuleFileName, &rule.m_csRuleBaseDescription, &rule.m_csModuleFileName,
        &rule.m_csRuleExtra,    &rule.m_csRuleText1,           &rule.m_csRuleText2,
        &rule.m_csRuleText3,    &rule.m_csRuleText4,           &rule.m_csRuleText5,
        &rule.m_csRuleText6};
}
template <typename R>
auto listsOf(R& rule) {
    return std::array{&rule.m_lstCategories, &rule.m_lstEngines, &rule.m_lstDBModules};
}
template <typename R>
auto numbersOf(R& rule) {
    return std::array{&rule.m_lRuleKind, &rule.m_lRuleStatus, &rule.m_lRuleSeverity,
                      &rule.m_lRuleLifeStatus, &rule.m_lRuleValue};
}

void mark(AnyRule& rule, const CStringW& text, QorLong number) {
    for (CStringW* const field : textsOf(rule))
        *field = text;
    for (CStringList* const list : listsOf(rule))
        list->AddTail(text);
    for (QorLong* const field : numbersOf(rule))
        *field = number;
    rule.m_RuleTag = static_cast<std::uint64_t>(number);
    rule.m_dRuleValue = number;
}

// The places of the fields that are marked so, by the order above.
std::vector<int> marked(const AnyRule& rule, const CStringW& text, QorLong number) {
    std::vector<int> places;
    int place = 0;
    const auto note = [&](bool has) {
        ++place;
        if (has) places.push_back(place);
    };
    for (const CStringW* const field : textsOf(rule))
        note(*field == text);
    for (const CStringList* const list : listsOf(rule))
        note(list->GetCount() == 1 && list->GetHead() == text);
    for (const QorLong* const field : numbersOf(rule))
        note(*field == number);
    note(rule.m_RuleTag == static_cast<std::uint64_t>(number));
    note(rule.m_dRuleValue == number);
    return places;
}

TEST(Rule, AssignmentAndUpdateMoveTheFieldsOfTheDefinitionAlone) {
    AnyRule source;
    AnyRule copy;
    AnyRule updated;
    mark(source, u"source", 200);
    mark(copy, u"target", 50);
    mark(updated, u"target", 50);
    copy = &source;
    EXPECT_EQ(marked(copy, u"source", 200),
              (std::vector{1, 2, 3, 4, 5, 6, 7, 8, 9, 17, 18, 19, 20, 22, 23, 25}));
    EXPECT_FALSE(source.UpdateRule(&updated));
    EXPECT_EQ(marked(updated, u"source", 200), (std::vector{1, 2, 3, 4, 22}));
}

TEST(Rule, HasTheNeutralAnswersOfTheBase) {
    AnyRule rule;
    const CQorData* data = nullptr;
    QORResultSet* results = nullptr;
    EXPECT_EQ(rule.Import(nullptr, nullptr, data, nullptr, results), -7);
    EXPECT_EQ(rule.GetRuleId(), -1);
    EXPECT_EQ(rule.GetMaterialStatus(), 0);
    EXPECT_EQ(rule.GetCutterStatus(), 0);
    EXPECT_TRUE(rule.ValidateInputData());
    EXPECT_FALSE(rule.m_bPopulated);
    EXPECT_EQ(rule.m_RuleLinks.m_Operator, QorOperator_Default);
    EXPECT_FALSE(rule.m_RuleLinks.m_bStatus);
}

TEST(Rule, PostPopulateTakesTheFormOfTheAddInOutOfFileNames) {
    AnyRule rule;
    rule.m_csRuleName = u"ProE";
    rule.m_csRuleSource = u"PROEWalls";
    rule.m_csRuleFileName = u"C:\\Rules\\HoleProeRulesProE.DLL";
    rule.PostPopulate();
    EXPECT_EQ(rule.m_csRuleFileName, u"c:\\rules\\holerules.dll");
    EXPECT_EQ(rule.m_csRuleSource, u"walls");
    EXPECT_EQ(rule.m_csRuleName, u"ProE");
}

TEST(Rule, ThatFailedKeepsItsPlaceAndDoesNothing) {
    CConcreteFailedRule rule(u"Wall", 4, u"Own");
    const CQorData* data = nullptr;
    QORResultSet* results = nullptr;
    EXPECT_EQ(rule.m_csRuleName, u"Wall");
    EXPECT_EQ(rule.m_csRuleDisplayName, u"");
    EXPECT_EQ(rule.m_lRuleSeverity, 4);
    EXPECT_EQ(rule.Execute(nullptr, data, results), 0);
    EXPECT_TRUE(rule.UpdateRule(nullptr));
    AnyRule other;
    rule = &other;
    EXPECT_EQ(rule.m_csRuleName, u"");
}

TEST(RuleCategory, ReadsBackByItsText) {
    AnyRule rule;
    const int expected[] = {-1, 0,  1, 2,  3,  4,  5,  6,  6,  8,  9, 10,
                            -1, 12, 6, -1, 15, 16, 17, 18, 19, 20, -1};
    for (int number = -1; number <= 21; ++number) {
        rule.SetRuleCategory(QORRuleCategory_e(number));
        EXPECT_EQ(rule.GetRuleCategoryEnum(), expected[number + 1]) << number;
    }
    CStringList shown;
    CQORFrameWrkUtils::GetRuleCategoryStringList(shown);
    std::vector<int> order;
    for (const CStringW& text : shown)
        order.push_back(CConcreteFailedRule(u"", 0, text).GetRuleCategoryEnum());
    EXPECT_EQ(order, (std::vector{0, 1, 2, 3, 4, 9, 5, 10, 12, 6}));
}

TEST(Constraint, CopiesOwnClonesOfTheirParameters) {
    const MessageRecorder messages;
    AnyRule rule;
    rule.m_Constraints.Add(rule.CreateConstraintObject(QORConstraint_Material, u"Steel", true));
    CQORConstraint& source = *rule.m_Constraints.GetAt(0);
    auto& parameter =
        rule.add(Type_CStringPtr, 11, {new CStringW(u"v")}, 2, 0, &source.m_Parameters);
    parameter.m_csRemarks = u"why";
    parameter.m_lMode = 5;
    parameter.m_bStatus = false;
    source.m_Parameters.GetAt(0)->m_bOption = true;
    source.m_Parameters.GetAt(0)->m_bStatus = false;
    source.m_Parameters.Add(nullptr);
    CQORConstraint copy(source);
    CQORConstraint assigned(QORConstraintType_e(0), u"", false);
    rule.add<int>(Type_Int, 1, {}, 2, 0, &assigned.m_Parameters);
    assigned = source;
    rule.ClearConstraints();
    const CurrentDocument document;
    EXPECT_EQ(xmlOf(copy.GetXMLNode()), xmlOf(assigned.GetXMLNode()));
    EXPECT_EQ(copy.FindParameterInArray(11), copy.m_Parameters.GetAt(0));
    for (const CQORConstraint* const clone : {&copy, &assigned}) {
        const CQorParamStorage& storage = *clone->m_Parameters.GetAt(0);
        const auto& cloned = *static_cast<CQorParameter<CStringW*>*>(storage.m_pParameter);
        EXPECT_EQ(storage.m_lId, 11);
        EXPECT_TRUE(storage.m_bOption);
        EXPECT_FALSE(storage.m_bStatus);
        EXPECT_EQ(cloned.m_lType, 11);
        EXPECT_EQ(cloned.m_lMode, 5);
        EXPECT_FALSE(cloned.m_bStatus);
        EXPECT_EQ(cloned.m_csRemarks, u"why");
        EXPECT_EQ(*cloned.m_Values.GetAt(0), u"v");
        EXPECT_EQ(clone->m_Parameters.GetAt(1), nullptr);
        EXPECT_EQ(clone->m_csValue, u"Steel");
    }
}

}  // namespace
