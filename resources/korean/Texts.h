#pragma once

#include <corvane/app/StringResources.h>
#include <corvane/app/StringTable.h>

namespace corvane::resources {

using namespace corvane::resource;

inline constexpr StringTableEntry kMessages[] = {
    {kScriptCaption, u"스크립트 규칙"},
    {kScriptFailed, u"규칙 \"%s\"의 스크립트가 실패했습니다."},
    {kScriptMissing,
     u"규칙 \"%s\"을(를) 검사할 수 없습니다. \"%s\"의 스크립트 파일을 찾을 수 없습니다."},
    {kErrorSource, u"원본"},
    {kErrorLine, u"줄"},
    {kErrorNumber, u"오류 번호"},
    {kErrorCode, u"상태 코드"},
    {kNewRuleName, u"새 규칙"},
    {kNewRuleDescription, u"사용자 정의 규칙"},
    {kIllegalParameter, u"매개 변수의 형식이 잘못되었습니다."},
};

inline constexpr StringTableEntry kCategories[] = {
    {69, u"조립"},     {72, u"적층 제조"}, {3012, u"판금"},      {3013, u"일반"},
    {3014, u"밀링"},   {3015, u"선삭"},    {3016, u"드릴링"},    {3017, u"사출 성형"},
    {3018, u"기타"},   {3021, u"도면"},    {3032, u"단조"},      {3033, u"용접"},
    {3038, u"주조"},   {3046, u"압출"},    {3047, u"튜브 벤딩"}, {3048, u"표면 처리"},
    {3049, u"열처리"}, {3050, u"공차"},    {3051, u"재료"},
};

}  // namespace corvane::resources
