#pragma once

#include <string>

/// The root of the source tree, without a separator at its end.
std::string SourceFolder();
/// The sample level's folder, without a separator at its end.
std::string SampleFolder();
/// A library of this build by its file name, as "films.so".
std::string BuiltLibrary(const std::string& fileName);
