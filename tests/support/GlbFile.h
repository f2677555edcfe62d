#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

/// Puts a binary glTF file together from its JSON and its buffer.
inline std::vector<unsigned char> MakeGlb(std::string json, std::vector<unsigned char> buffer) {
    json.resize((json.size() + 3) / 4 * 4, ' ');
    buffer.resize((buffer.size() + 3) / 4 * 4, 0);
    std::vector<unsigned char> file;
    const auto word = [&](std::uint32_t value) {
        for (int i = 0; i < 4; ++i) {
            file.push_back(static_cast<unsigned char>(value >> (8 * i)));
        }
    };
    const auto jsonSize = static_cast<std::uint32_t>(json.size());
    const auto bufferSize = static_cast<std::uint32_t>(buffer.size());
    word(0x46546C67u);
    word(2);
    word(12 + 8 + jsonSize + 8 + bufferSize);
    word(jsonSize);
    word(0x4E4F534Au);
    file.insert(file.end(), json.begin(), json.end());
    word(bufferSize);
    word(0x004E4942u);
    file.insert(file.end(), buffer.begin(), buffer.end());
    return file;
}

/// Appends numbers as they stand in memory.
template <class T> void AppendRaw(std::vector<unsigned char>& buffer, const std::vector<T>& values) {
    const std::size_t at = buffer.size();
    buffer.resize(at + values.size() * sizeof(T));
    std::memcpy(buffer.data() + at, values.data(), values.size() * sizeof(T));
}
