// Reads the bytes as a file of key parameters. Whatever it holds, every record stays one that can be written,
// and what is written reads back the same.
#include "keys/rules/KeyParamsFile.h"

#include "files/base/Log.h"
#include "framework/MessageBox.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>

namespace {

constexpr COLORREF kColor = 0xFFFFFF; // a file holds three bytes of a colour

void Check(bool holds, int line = __builtin_LINE()) {
    if (!holds) {
        std::fprintf(stderr, "fuzz/KeyParamsFile.cpp:%d: doesn't hold\n", line);
        std::abort();
    }
}

/// A file in memory where the system has one, so that the disk isn't what is tested.
class Place {
public:
    explicit Place(const char* name) : path("/dev/shm/films_fuzz_" + std::to_string(getpid()) + "_" + name) {}
    ~Place() { std::remove(path.c_str()); }
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;

    const std::string path;
};

void WriteBytes(const std::string& path, const std::uint8_t* data, std::size_t size) {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    Check(file != nullptr);
    Check(std::fwrite(data, 1, size, file) == size);
    Check(std::fclose(file) == 0);
}

void CheckSame(const KeyKindParams& a, const KeyKindParams& b) {
    Check(a.visible == b.visible && a.rectHeight == b.rectHeight);
    Check((a.normalColor & kColor) == b.normalColor && (a.highlightColor & kColor) == b.highlightColor);
}

} // namespace

// What the code around the reader calls stands here, so that neither windows nor the engine are linked.
int AfxMessageBox(const char*, UINT, UINT) {
    return IDOK;
}
void DebugPrint(const char*, ...) {
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Place given("given");
    static const Place written("written");
    WriteBytes(given.path, data, size);
    KeyKindParamsTable records;
    LoadKeyParamsFile(given.path.c_str(), &records);
    for (const KeyKindParams& record : records) {
        Check(record.name.empty()); // names are never the file's
    }
    Check(SaveKeyParamsFile(written.path, records));
    KeyKindParamsTable again;
    Check(LoadKeyParamsFile(written.path.c_str(), &again));
    for (std::size_t kind = 0; kind < records.size(); ++kind) {
        CheckSame(records[kind], again[kind]);
    }
    return 0;
}
