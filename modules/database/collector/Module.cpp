// The exports of the collector module.

#include <algorithm>
#include <memory>
#include <vector>

#include <corvane/base/ModuleExport.h>

#include "Collector.h"

namespace {

constexpr int kMade = 0;
constexpr int kNotMade = -1;

// All collectors of the module. One whose maker has forgotten it goes with the module, since rule
// modules may still hold it.
struct Collectors : std::vector<std::unique_ptr<collector::Collector>> {
    // Made after the list of the drivers, and so ended before their code goes.
    Collectors() { collector::loadedDrivers(); }
};
Collectors collectors;

}  // namespace

CORVANE_MODULE_EXPORT int create(const qor_db::IConnectorData* connector,
                                 qor_db::IDatabaseCollector** result) {
    if (!connector || !result) return kNotMade;
    try {
        auto made = std::make_unique<collector::Collector>(*connector);
        collectors.push_back(std::move(made));
    } catch (...) {
        return kNotMade;
    }
    // The collector keeps what became of it.
    static_cast<void>(collectors.back()->open());
    *result = collectors.back().get();
    return kMade;
}

CORVANE_MODULE_EXPORT int destroy(qor_db::IDatabaseCollector** collector) {
    if (!collector) return kNotMade;
    const auto own = std::find_if(collectors.begin(), collectors.end(),
                                  [&](const auto& held) { return held.get() == *collector; });
    *collector = nullptr;
    if (own == collectors.end()) return kNotMade;
    collectors.erase(own);
    return kMade;
}
