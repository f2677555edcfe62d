#pragma once

/// The host's plug-in that makes objects which only stand for something, such as a camera's eye or the sun.
namespace HelperPlugin {
constexpr const char* kName = "Control";
/// Its type word for helper objects.
constexpr int kType = 2;
} // namespace HelperPlugin
