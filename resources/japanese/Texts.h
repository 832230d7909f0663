#pragma once

#include <corvane/app/StringResources.h>
#include <corvane/app/StringTable.h>

namespace corvane::resources {

using namespace corvane::resource;

inline constexpr StringTableEntry kMessages[] = {
    {kScriptCaption, u"スクリプトルール"},
    {kScriptFailed, u"ルール「%s」のスクリプトが失敗しました。"},
    {kScriptMissing,
     u"ルール「%s」をチェックできません。「%s」のスクリプトファイルが見つかりません。"},
    {kErrorSource, u"発生元"},
    {kErrorLine, u"行"},
    {kErrorNumber, u"エラー番号"},
    {kErrorCode, u"ステータスコード"},
    {kNewRuleName, u"新しいルール"},
    {kNewRuleDescription, u"ユーザー定義ルール"},
    {kIllegalParameter, u"パラメーターの型が不正です。"},
};

inline constexpr StringTableEntry kCategories[] = {
    {69, u"組立"},           {72, u"積層造形"},   {3012, u"板金"},       {3013, u"一般"},
    {3014, u"フライス加工"}, {3015, u"旋削加工"}, {3016, u"穴あけ加工"}, {3017, u"射出成形"},
    {3018, u"その他"},       {3021, u"図面"},     {3032, u"鍛造"},       {3033, u"溶接"},
    {3038, u"鋳造"},         {3046, u"押出成形"}, {3047, u"パイプ曲げ"}, {3048, u"表面処理"},
    {3049, u"熱処理"},       {3050, u"公差"},     {3051, u"材料"},
};

}  // namespace corvane::resources
