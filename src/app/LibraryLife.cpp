#include "app/CCorvaneFrameworkApp.h"

namespace {

// Starts with the library and ends with it. What the start needs of the platform layer is made at
// its first use, so the order in which the files of the library are initialised does not matter.
class LibraryLife {
public:
    LibraryLife() { app_.InitInstance(); }
    LibraryLife(const LibraryLife&) = delete;
    LibraryLife& operator=(const LibraryLife&) = delete;
    ~LibraryLife() { app_.ExitInstance(); }

private:
    CCorvaneFrameworkApp app_;
};

const LibraryLife life;

}  // namespace
