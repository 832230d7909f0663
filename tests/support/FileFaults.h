#pragma once

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "system/posix/FileOperations.h"

/// Takes the place of the system's file operations for its lifetime. It fails calls by their
/// number, and knows what a machine that loses its power would lose.
class FileFaults : public corvane::system::FileOperations {
public:
    static constexpr int kNever = std::numeric_limits<int>::max();

    /// The calls from number `first` (from 0) to before `end` fail with EIO.
    explicit FileFaults(int first = kNever, int end = kNever) : first_(first), end_(end) {
        corvane::system::setFileOperations(this);
    }
    ~FileFaults() override { corvane::system::setFileOperations(nullptr); }
    FileFaults(const FileFaults&) = delete;
    FileFaults& operator=(const FileFaults&) = delete;

    int calls() const { return calls_; }

    /// What is in the files after the power was lost: what was written and not synced is gone. A
    /// rename in a folder that was not synced has reached the disk, or has not.
    void losePower(bool renamesReachedTheDisk) {
        for (const std::string& path : unsynced_) {
            if (std::filesystem::exists(path)) std::filesystem::resize_file(path, 0);
        }
        if (renamesReachedTheDisk) return;
        for (auto move = moves_.rbegin(); move != moves_.rend(); ++move) {
            std::filesystem::remove(move->to);
            if (move->replaced) std::ofstream(move->to, std::ios::binary) << move->former;
        }
    }

    int open(const char* path, int flags, mode_t mode) override {
        if (fails()) return -1;
        const int descriptor = FileOperations::open(path, flags, mode);
        if (descriptor >= 0) paths_[descriptor] = path;
        return descriptor;
    }
    ssize_t write(int descriptor, const void* bytes, std::size_t count) override {
        if (fails()) return -1;
        if (const auto path = paths_.find(descriptor); path != paths_.end())
            unsynced_.insert(path->second);
        return FileOperations::write(descriptor, bytes, count);
    }
    int sync(int descriptor) override {
        if (fails()) return -1;
        const std::string path = paths_[descriptor];
        unsynced_.erase(path);
        std::erase_if(moves_, [&](const Move& move) { return folderOf(move.to) == path; });
        return FileOperations::sync(descriptor);
    }
    int truncate(int descriptor, off_t size) override {
        return fails() ? -1 : FileOperations::truncate(descriptor, size);
    }
    int reserve(int descriptor, off_t size) override {
        return fails() ? EIO : FileOperations::reserve(descriptor, size);
    }
    int close(int descriptor) override {
        // The descriptor is gone after a failure too.
        const bool failed = fails();
        paths_.erase(descriptor);
        const int result = FileOperations::close(descriptor);
        if (failed) errno = EIO;
        return failed ? -1 : result;
    }
    int rename(const char* from, const char* to) override {
        if (fails()) return -1;
        Move move{to, std::filesystem::exists(to), {}};
        std::ifstream former(to, std::ios::binary);
        move.former.assign(std::istreambuf_iterator<char>(former), {});
        const int result = FileOperations::rename(from, to);
        if (result != 0) return result;
        unsynced_.erase(to);
        if (unsynced_.erase(from) > 0) unsynced_.insert(to);
        moves_.push_back(move);
        return 0;
    }
    int unlink(const char* path) override { return fails() ? -1 : FileOperations::unlink(path); }
    int changeOwner(int descriptor, uid_t user, gid_t group) override {
        return fails() ? -1 : FileOperations::changeOwner(descriptor, user, group);
    }
    int changeMode(int descriptor, mode_t mode) override {
        return fails() ? -1 : FileOperations::changeMode(descriptor, mode);
    }
    int lock(int descriptor, int operation) override {
        return fails() ? -1 : FileOperations::lock(descriptor, operation);
    }

private:
    struct Move {
        std::string to;
        bool replaced;
        std::string former;
    };

    static std::string folderOf(const std::string& path) {
        return std::filesystem::path(path).parent_path();
    }
    bool fails() {
        const int call = calls_++;
        if (call < first_ || call >= end_) return false;
        errno = EIO;
        return true;
    }

    int first_;
    int end_;
    int calls_ = 0;
    std::map<int, std::string> paths_;
    std::set<std::string> unsynced_;
    std::vector<Move> moves_;
};
