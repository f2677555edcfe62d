#include "framework/private/Utf.h"

#include <QString>

std::string ToUtf8(const std::u16string& text) {
    return QString::fromStdU16String(text).toStdString();
}
