#pragma once

#include <string>
#include <vector>

#include <corvane/scriptrules/IScriptProcessor.h>

/// What the test host shall do and what it saw; its module exports one as "testHost".
struct TestHost {
    std::u16string fault{};  ///< The call or engine that fails, or a lie: see the code.
    std::int16_t prepared = 1;
    std::int16_t ran = 1;
    std::int32_t line = 4;
    const char16_t* errorType = nullptr;
    std::vector<std::u16string> calls{};
    std::u16string script{};
    int references = 0;
};
