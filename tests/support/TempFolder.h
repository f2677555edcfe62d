#pragma once

#include <string>
#include <vector>

/// A folder of its own that goes with the object.
class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    /// With a separator at its end.
    const std::string& Path() const { return path; }
    std::string File(const std::string& name) const { return path + name; }

private:
    std::string path;
};

std::string ReadWholeFile(const std::string& path);
void WriteWholeFile(const std::string& path, const std::string& bytes);

/// Little-endian bytes, put together by hand for file tests.
class Bytes {
public:
    Bytes& U8(unsigned value);
    Bytes& U16(unsigned value);
    Bytes& U32(unsigned value);
    /// A 16-bit length and the text.
    Bytes& Text(const std::string& text);
    Bytes& Fill(std::size_t count, unsigned value);
    /// A chunk header and its data.
    Bytes& Chunk(unsigned id, const Bytes& data);
    Bytes& Append(const Bytes& other);
    const std::string& Str() const { return bytes; }

private:
    std::string bytes;
};
