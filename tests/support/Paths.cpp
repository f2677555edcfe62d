#include "tests/support/Paths.h"

std::string SourceFolder() {
    return FILMS_SOURCE_FOLDER;
}

std::string SampleFolder() {
    return SourceFolder() + "/examples/harbour";
}

std::string BuiltLibrary(const std::string& fileName) {
    return std::string(FILMS_LIBRARY_FOLDER) + "/" + fileName;
}
