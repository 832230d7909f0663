#pragma once

#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <string>

#include "support/FileFaults.h"
#include "support/TemporaryFolder.h"

/// Saves a file again and again: each operation of the system fails once, then all from it on, and
/// at last the power is lost after the save. The file has the former content when the save says
/// that it failed and else the new one, and no other file stays in the folder as long as something
/// can still be deleted.
inline void expectTheOldOrTheNewFile(const TemporaryFolder& folder, const std::string& name,
                                     const std::string& former, const std::function<bool()>& save) {
    namespace fs = std::filesystem;
    folder.write(name, former);
    int calls = 0;
    {
        const FileFaults none;
        ASSERT_TRUE(save());
        calls = none.calls();
    }
    const std::string wanted = folder.read(name);
    ASSERT_NE(wanted, former);
    for (int first = 0; first < calls; ++first) {
        for (const int end : {first + 1, FileFaults::kNever}) {
            folder.write(name, former);
            const FileFaults faults(first, end);
            const bool isSaved = save();
            EXPECT_EQ(folder.read(name), isSaved ? wanted : former) << first;
            for (const auto& entry : fs::directory_iterator(folder.path())) {
                if (entry.path().extension() != ".tmp") continue;
                EXPECT_EQ(end, FileFaults::kNever) << first << ' ' << entry.path();
                fs::remove(entry);
            }
        }
    }
    for (const bool renamesReachedTheDisk : {false, true}) {
        folder.write(name, former);
        FileFaults faults;
        EXPECT_TRUE(save());
        faults.losePower(renamesReachedTheDisk);
        EXPECT_EQ(folder.read(name), wanted) << renamesReachedTheDisk;
    }
}
