#include "Cache.h"

namespace corvane::part {

Cache& Cache::instance() {
    static Cache cache;
    return cache;
}

OpenResult Cache::get(const std::string& path, const std::string& units, const Read& read) {
    Entry entry;
    std::error_code error;
    const std::filesystem::path given(std::u8string(path.begin(), path.end()));
    entry.file = std::filesystem::absolute(given, error);
    if (error) entry.file = given;
    entry.units = units;
    entry.size = std::filesystem::file_size(entry.file, error);
    entry.time = std::filesystem::last_write_time(entry.file, error);
    // Held while a part is read: a second thread that asks for it waits and gets the same.
    const std::lock_guard lock(mutex_);
    for (auto it = entries_.begin(); it != entries_.end(); ++it) {
        if (it->file != entry.file || it->units != entry.units) continue;
        if (it->size == entry.size && it->time == entry.time) {
            entries_.splice(entries_.begin(), entries_, it);
            return it->result;
        }
        entries_.erase(it);
        break;
    }
    entry.result = read(entry.file);
    entries_.push_front(std::move(entry));
    if (entries_.size() > kMost) entries_.pop_back();
    return entries_.front().result;
}

}  // namespace corvane::part
