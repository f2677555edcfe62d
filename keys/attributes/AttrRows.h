#pragma once

#include "plugin/contract/EditorObject.h"
#include "plugin/contract/Member.h"

#include <cstddef>
#include <cstdint>
#include <list>
#include <memory>
#include <string>

class FilmSession;

/// What a browse function gets and gives; lives for one call.
struct AttrBrowseRequest {
    std::string value; ///< the row's text; what is left alone changes nothing
    EditorObject* object =
        nullptr; ///< that the key belongs to; may be null, and may go while the user chooses
    std::int32_t fxKind = 0;
    FilmSession* session = nullptr; ///< never null in a browser
};

using AttrBrowse = void (*)(AttrBrowseRequest*);

/// One row of the attributes window: a property, and a function where it can be browsed for.
struct AttrRow {
    std::unique_ptr<CMember> member;
    AttrBrowse browse = nullptr;
};

/// What a row shows as its value.
std::string GetRowText(const CMember& member);

/// The rows of one key in the order of adding; owned with their members, which go together since their
/// conditions look at each other.
class AttrRows {
public:
    AttrRows() = default;
    ~AttrRows() { DeleteAll(); }
    AttrRows(const AttrRows&) = delete;
    AttrRows& operator=(const AttrRows&) = delete;

    /// A row that is in no list yet; the caller appends it. The arguments are those of CMember.
    static std::unique_ptr<AttrRow> Make(const char* name, std::uint32_t type, const void* initial,
                                         const char* description, std::uint32_t flags, AttrBrowse browse);
    /// The member of the row that was appended.
    CMember& Append(std::unique_ptr<AttrRow> row);
    /// The member of the first row of exactly this name and category; null for none or a null argument.
    CMember* FindMember(const char* name, const char* category) const;
    /// The first row of tag 12, or null.
    AttrRow* FindObjectIdRow() const;
    void DeleteAll();

    bool empty() const { return rows.empty(); }
    std::size_t size() const { return rows.size(); }
    auto begin() const { return rows.begin(); }
    auto end() const { return rows.end(); }

private:
    std::list<AttrRow*> rows;
};
