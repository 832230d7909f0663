#include "rules/IllegalParameter.h"

#include <corvane/app/StringResources.h>
#include <corvane/platform/MessageBox.h>

namespace corvane::rules {

void reportIllegalParameter() {
    AfxMessageBox(ResourceText(resource::kIllegalParameter).data());
}

}  // namespace corvane::rules
