#pragma once

#include "framework/Export.h"
#include "framework/Types.h"

#include <cstddef>
#include <span>
#include <string>
#include <vector>

/// Resource types as numbered in the compiled file.
inline constexpr UINT RT_BITMAP = 2, RT_MENU = 4, RT_DIALOG = 5, RT_STRING = 6, RT_TOOLBAR = 241;

/// The compiled resources of one library: a range of bytes that outlives the module, indexed by type and
/// number. Damaged bytes give a module that holds the records before the damage and IsValid() false.
class FILMS_API ResourceModule {
public:
    explicit ResourceModule(std::span<const std::byte> compiled);

    bool IsValid() const { return valid; }
    std::size_t Count() const { return entries.size(); }
    /// Empty when there is no such resource.
    std::span<const std::byte> Find(UINT type, UINT id) const;

private:
    struct Entry {
        UINT type;
        UINT id;
        std::span<const std::byte> bytes;
    };

    std::vector<Entry> entries;
    bool valid = true;
};

/// The module in which windows, menus and strings are looked up; null finds nothing.
FILMS_API HINSTANCE AfxGetResourceHandle();
FILMS_API void AfxSetResourceHandle(HINSTANCE module);

/// Switches the look-up to a module and back again.
class FILMS_API ResourceScope {
public:
    explicit ResourceScope(HINSTANCE module);
    ~ResourceScope();
    ResourceScope(const ResourceScope&) = delete;
    ResourceScope& operator=(const ResourceScope&) = delete;

private:
    HINSTANCE old;
};

FILMS_API std::span<const std::byte> FindResource(HINSTANCE module, UINT type, UINT id);
/// The text of the string table as UTF-8. False, and an empty text, when there is none.
FILMS_API bool LoadString(HINSTANCE module, UINT id, std::string& text);
/// From the current module; empty when there is none.
FILMS_API std::string LoadString(UINT id);
