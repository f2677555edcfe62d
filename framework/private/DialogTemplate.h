#pragma once

#include "framework/Gdi.h"
#include "framework/Types.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

// A compiled dialog template, in pixels.
struct DialogItem {
    UINT id = 0;
    DWORD style = 0;
    DWORD exStyle = 0;
    CRect rect;
    std::string className;
    std::string text;
};

struct DialogTemplate {
    DWORD style = 0;
    DWORD exStyle = 0;
    CRect rect;
    std::string caption;
    std::shared_ptr<const CFont> font; // of the window and its controls; null without one
    std::vector<DialogItem> items;
};

// Nothing for a damaged template.
std::optional<DialogTemplate> ReadDialog(std::span<const std::byte> bytes);
// From the current resource module.
std::optional<DialogTemplate> LoadDialog(UINT id);

// A dialog unit is a quarter of 6 pixels across and an eighth of 13 down, whatever the font.
constexpr int DialogX(int units) {
    return units * 6 / 4;
}
constexpr int DialogY(int units) {
    return units * 13 / 8;
}
