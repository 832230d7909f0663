// Ends at once. It calls the library only so that the linker keeps it.

#include <libxml/parser.h>

int main(int argc, char**) {
    if (argc > 1) xmlInitParser();
    return 0;
}
