#pragma once

#include "plugin/contract/ClassDatabase.h"

#include <string>

/// The first class whose name equals `name` ignoring case, or null.
const CClassDefinition* FindClass(const IClassDatabase* database, const std::string& name);

/// True for equal names (case counts), and when any base of the class derives from `baseName`. A class
/// that is its own ancestor ends in false.
bool IsClassDerivedFrom(const IClassDatabase* database, const std::string& className,
                        const std::string& baseName);
