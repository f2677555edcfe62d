#include "tests/support/TempFolder.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

TempFolder::TempFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "films-XXXXXX").string();
    path = std::string(mkdtemp(pattern.data())) + "/";
}

TempFolder::~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
}

std::string ReadWholeFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

void WriteWholeFile(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

Bytes& Bytes::U8(unsigned value) {
    bytes.push_back(static_cast<char>(value & 0xFF));
    return *this;
}

Bytes& Bytes::U16(unsigned value) {
    return U8(value).U8(value >> 8);
}

Bytes& Bytes::U32(unsigned value) {
    return U16(value & 0xFFFF).U16(value >> 16);
}

Bytes& Bytes::Text(const std::string& text) {
    U16(static_cast<unsigned>(text.size()));
    bytes += text;
    return *this;
}

Bytes& Bytes::Fill(std::size_t count, unsigned value) {
    bytes.append(count, static_cast<char>(value));
    return *this;
}

Bytes& Bytes::Chunk(unsigned id, const Bytes& data) {
    U16(id).U32(static_cast<unsigned>(data.bytes.size()));
    return Append(data);
}

Bytes& Bytes::Append(const Bytes& other) {
    bytes += other.bytes;
    return *this;
}
