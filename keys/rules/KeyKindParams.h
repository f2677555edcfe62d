#pragma once

#include "framework/Types.h"
#include "plugin/contract/KeyKindTable.h"

#include <array>
#include <string>

/// How the keys of one kind are drawn.
struct KeyKindParams {
    static constexpr COLORREF kDefaultNormal = 0x808080;
    static constexpr COLORREF kDefaultHighlight = 0xC0C0C0;
    static constexpr int kDefaultHeight = 15;

    std::string name;
    COLORREF normalColor = kDefaultNormal;
    COLORREF highlightColor = kDefaultHighlight; ///< while selected
    int rectHeight = kDefaultHeight;             ///< pixels
    bool visible = true;
};

/// One record per key kind. Files hold the first `KeyKind::FilterCount`.
using KeyKindParamsTable = std::array<KeyKindParams, kKeyKindCount>;
