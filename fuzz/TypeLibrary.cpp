// The bytes of a type library, or of a module that carries one.

#include <corvane/scriptrules/TypeLibDetails.h>

#include "Fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Quick quick;
    static const fuzz::Folder folder;
    folder.write("library", fuzz::textOf(data, size));
    TypeLibDetails first(folder.wide("library"));
    if (!first.ReadTypeLibAttributes()) {
        fuzz::require(first.majorVersion == 0 && first.lcid == 0,
                      "what is not read changes nothing");
        return 0;
    }
    TypeLibDetails second(folder.wide("library"));
    fuzz::require(second.ReadTypeLibAttributes() && second.guid == first.guid &&
                      second.majorVersion == first.majorVersion &&
                      second.minorVersion == first.minorVersion && second.lcid == first.lcid,
                  "a library reads the same again");
    // Another resource of the same module.
    TypeLibDetails(folder.wide("library") + u"\\2").ReadTypeLibAttributes();
    return 0;
}
