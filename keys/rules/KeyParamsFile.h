#pragma once

#include "keys/rules/KeyKindParams.h"

#include <string>

class IEditor;

/// File in the editor's data folder that holds the key parameters of the start.
inline constexpr const char* kDefaultKeyParamsFile = "DefaultKeysParams.fkd";

/// Reads a file of key parameters: text, 20 blocks in the order of the kinds. Names and the two head lines
/// are passed over. False for an empty path, a null table, a file that doesn't open or one that is malformed;
/// what was read before the fault stays.
bool LoadKeyParamsFile(const char* path, KeyKindParamsTable* records);
/// False for an empty path or a file that can't be written whole.
bool SaveKeyParamsFile(const std::string& path, const KeyKindParamsTable& records);
/// Reads the file in the data folder and sets the names of the kinds. When it can't be read the user is told
/// and `own`, whatever `records` is, gets the built-in values. Nothing for null records.
void LoadDefaultKeyParams(IEditor* editor, KeyKindParamsTable* records, KeyKindParamsTable& own);
