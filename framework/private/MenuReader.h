#pragma once

#include <cstddef>
#include <memory>
#include <span>

struct MenuData;

// A compiled menu template of either version. Null when it is damaged or nested too deep.
std::shared_ptr<MenuData> ReadMenu(std::span<const std::byte> bytes);
