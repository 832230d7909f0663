#include "xml/ErrorText.h"

namespace corvane::xml {
namespace {

// Codes in this range stand for the numbered errors of an automation object.
constexpr HResult kFirstNumbered = static_cast<HResult>(0x80040200);
constexpr HResult kBehindNumbered = static_cast<HResult>(0x80050000);

const char16_t* knownText(HResult code) {
    switch (code) {
        case kErrorOutOfMemory:
            return u"Not enough memory to complete the operation.";
        case kErrorClassNotRegistered:
            return u"The class is not registered.";
        case kErrorModuleNotFound:
            return u"The module could not be found.";
        case kErrorNoInterface:
            return u"The interface is not supported.";
        case kErrorFail:
            return u"Unspecified error.";
        default:
            return nullptr;
    }
}

}  // namespace

CStringW errorText(HResult code) {
    if (const char16_t* known = knownText(code)) return known;
    CStringW text;
    if (code > kFirstNumbered && code < kBehindNumbered)
        text.Format(u"IDispatch error #%d", code - kFirstNumbered);
    else
        text.Format(u"Unknown error 0x%0lX", code);
    return text;
}

}  // namespace corvane::xml
