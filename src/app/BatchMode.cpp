#include <atomic>

#include <corvane/app/BatchMode.h>

namespace {

std::atomic<bool> batchMode = false;

}  // namespace

void GetBatchModeStatus(bool* status) {
    if (status) *status = batchMode;
}

void SetBatchModeStatus(bool status) {
    batchMode = status;
}
