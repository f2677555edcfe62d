#pragma once

#include "plugin/contract/ClassDatabase.h"

#include <string>

namespace engine {

/// The editor's classes with the ones that every level knows. Owns its definitions.
class ClassDatabase : public IClassDatabase {
public:
    ClassDatabase();
    ~ClassDatabase() override;
    ClassDatabase(const ClassDatabase&) = delete;
    ClassDatabase& operator=(const ClassDatabase&) = delete;

    /// Adds a class; the base may be empty.
    CClassDefinition& Add(const std::string& name, const std::string& baseName,
                          const std::string& description);
    const CClassDefinition* Find(const std::string& name) const;
    /// True for the class itself. Rings among the bases end in false.
    bool IsDerivedFrom(const std::string& name, const std::string& baseName) const;
};

/// The database that the engine itself asks, with the default classes.
const ClassDatabase& DefaultClasses();

/// Cameras and texts that the user places; only the editor shows them.
constexpr const char* kCameraClass = "CameraObject";
constexpr const char* kLabelClass = "TextLabel";

/// Whether objects of the class shine: the two kinds of lights of films and what derives from them.
bool IsLightClass(const std::string& className);
/// Whether the class is that of a point of a film's camera: eye, target or handle of the path.
bool IsCameraPointClass(const std::string& className);

} // namespace engine
