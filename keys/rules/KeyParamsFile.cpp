#include "keys/rules/KeyParamsFile.h"

#include "framework/MessageBox.h"
#include "keys/rules/KeyKinds.h"
#include "plugin/contract/Editor.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <memory>
#include <span>

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using FilePtr = std::unique_ptr<std::FILE, CloseFile>;

bool IsSpace(int c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool IsDigit(int c) {
    return c >= '0' && c <= '9';
}

/// Takes a file apart by the rules of the scan formats in which it was first read: a blank stands for any
/// white space or none, other characters for themselves. Numbers too large are cut to what an int can hold.
class Scanner {
public:
    explicit Scanner(std::FILE* source) : file(source) {}

    /// Up to a line feed, the end of the file or a byte of 255, whichever comes first.
    void SkipLine() {
        constexpr unsigned kLastCharacter = 254;
        int c = std::getc(file);
        while (c != '\n' && static_cast<unsigned>(c) <= kLastCharacter) {
            c = std::getc(file);
        }
    }

    void SkipSpace() {
        while (IsSpace(Peek())) {
            std::getc(file);
        }
    }

    bool Match(const char* text) {
        for (; *text != '\0'; ++text) {
            if (*text == ' ') {
                SkipSpace();
            } else if (Peek() != *text) {
                return false;
            } else {
                std::getc(file);
            }
        }
        return true;
    }

    bool ReadInt(int& number) {
        SkipSpace();
        const bool negative = Peek() == '-';
        if (negative || Peek() == '+') {
            std::getc(file);
        }
        if (!IsDigit(Peek())) {
            return false;
        }
        std::int64_t value = 0;
        while (IsDigit(Peek())) {
            value = std::min(value * 10 + (std::getc(file) - '0'), kLargest + 1);
        }
        number = static_cast<int>(negative ? -value : std::min(value, kLargest));
        return true;
    }

    /// A line of the form "<label> : n,n,n"; the white space behind it goes too.
    bool ReadLine(const char* label, std::span<int> numbers) {
        if (!Match(label)) {
            return false;
        }
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            if ((i > 0 && !Match(",")) || !ReadInt(numbers[i])) {
                return false;
            }
        }
        SkipSpace();
        return true;
    }

private:
    static constexpr std::int64_t kLargest = std::numeric_limits<int>::max();

    int Peek() { return std::ungetc(std::getc(file), file); }

    std::FILE* file;
};

bool ReadColor(Scanner& scanner, const char* label, COLORREF& color) {
    int parts[3] = {};
    if (!scanner.ReadLine(label, parts)) {
        return false;
    }
    // As the file has it, even outside 0 to 255.
    color = static_cast<COLORREF>(parts[0]) + static_cast<COLORREF>(parts[1]) * 0x100U +
            static_cast<COLORREF>(parts[2]) * 0x10000U;
    return true;
}

bool ReadBlock(Scanner& scanner, KeyKindParams& record) {
    scanner.SkipLine();
    int number = 0;
    if (!scanner.ReadLine("Visible : ", {&number, 1})) {
        return false;
    }
    record.visible = number == 1;
    if (!scanner.ReadLine("Rect height : ", {&number, 1})) {
        return false;
    }
    record.rectHeight = number;
    if (!ReadColor(scanner, "Normal color (r,g,b) : ", record.normalColor) ||
        !ReadColor(scanner, "Highlight color (r,g,b) : ", record.highlightColor)) {
        return false;
    }
    scanner.SkipLine();
    return true;
}

void WriteColor(std::FILE* file, const char* label, COLORREF color) {
    std::fprintf(file, "%s color (r,g,b) : %d,%d,%d\n", label, GetRValue(color), GetGValue(color),
                 GetBValue(color));
}

void WriteBlock(std::FILE* file, int kind, const KeyKindParams& record) {
    std::fprintf(file, "** Name : %s\nVisible : %d\nRect height : %d\n", GetKeyKindName(kind),
                 record.visible ? 1 : 0, record.rectHeight);
    WriteColor(file, "Normal", record.normalColor);
    WriteColor(file, "Highlight", record.highlightColor);
    std::fputs("********************\n", file);
}

void SetBuiltInValues(KeyKindParamsTable& records) {
    for (KeyKindParams& record : records) {
        record.rectHeight = KeyKindParams::kDefaultHeight;
        record.normalColor = KeyKindParams::kDefaultNormal;
        record.highlightColor = KeyKindParams::kDefaultHighlight;
        record.visible = true;
    }
}

} // namespace

bool LoadKeyParamsFile(const char* path, KeyKindParamsTable* records) {
    if (path == nullptr || *path == '\0' || records == nullptr) {
        return false;
    }
    const FilePtr file(std::fopen(path, "r"));
    if (file == nullptr) {
        return false;
    }
    Scanner scanner(file.get());
    scanner.SkipLine();
    scanner.SkipLine();
    return std::ranges::all_of(std::span(*records).first<KeyKind::FilterCount>(),
                               [&scanner](KeyKindParams& record) { return ReadBlock(scanner, record); });
}

bool SaveKeyParamsFile(const std::string& path, const KeyKindParamsTable& records) {
    FilePtr file(path.empty() ? nullptr : std::fopen(path.c_str(), "w"));
    if (file == nullptr) {
        return false;
    }
    std::fputs("QuorlEd film key params file\n***************\n", file.get());
    for (int kind = 0; kind < KeyKind::FilterCount; ++kind) {
        WriteBlock(file.get(), kind, records[static_cast<std::size_t>(kind)]);
    }
    const bool written = std::ferror(file.get()) == 0;
    return std::fclose(file.release()) == 0 && written;
}

void LoadDefaultKeyParams(IEditor* editor, KeyKindParamsTable* records, KeyKindParamsTable& own) {
    if (records == nullptr) {
        return;
    }
    std::string path;
    if (editor != nullptr) {
        editor->GetDataFilePath(path, kDefaultKeyParamsFile);
    }
    const bool isRead = LoadKeyParamsFile(path.c_str(), records);
    if (!isRead) {
        // Required: the control's own table, whatever table was asked for.
        SetBuiltInValues(own);
    }
    for (std::size_t kind = 0; kind < records->size(); ++kind) {
        (*records)[kind].name = GetKeyKindName(static_cast<int>(kind));
    }
    if (!isRead) { // the last thing: while the user reads it, the tables may go
        AfxMessageBox("File DefaultKeysParams.fkd is corrupt or was deleted");
    }
}
