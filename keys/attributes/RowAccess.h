#pragma once

#include "keys/attributes/AttrRows.h"
#include "plugin/contract/Types.h"

#include <cstdint>
#include <string>

// Makes rows and reads them back, for the functions of each kind of key.

/// Three rows of floats.
struct VectorRowNames {
    const char* names[3];
    const char* category;
};

CMember& AddText(AttrRows& rows, const char* name, const char* category, const std::string& text,
                 AttrBrowse browse = nullptr);
CMember& AddFloat(AttrRows& rows, const char* name, const char* category, float number);
CMember& AddInt(AttrRows& rows, const char* name, const char* category, std::int32_t number);
/// A row that takes an object by its id.
CMember& AddObjectId(AttrRows& rows, const char* category, std::int32_t id);
CMember& AddBool(AttrRows& rows, const char* name, const char* category, bool flag);
CMember& AddColor(AttrRows& rows, const char* name, const char* category, const Vector3& color,
                  AttrBrowse browse);
void AddVector(AttrRows& rows, const VectorRowNames& names, const Vector3& vector);

// Each leaves its target alone, and answers false, where there is no such row.
bool ReadText(const AttrRows& rows, const char* name, const char* category, std::string& text);
bool ReadFloat(const AttrRows& rows, const char* name, const char* category, float& number);
bool ReadInt(const AttrRows& rows, const char* name, const char* category, std::int32_t& number);
bool ReadObjectId(const AttrRows& rows, const char* category, std::int32_t& id);
bool ReadBool(const AttrRows& rows, const char* name, const char* category, std::uint8_t& flag);
bool ReadColor(const AttrRows& rows, const char* name, const char* category, Vector3& color);
/// Takes the components that have a row; false if none has.
bool ReadVector(const AttrRows& rows, const VectorRowNames& names, Vector3& vector);
