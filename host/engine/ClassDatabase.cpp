#include "host/engine/ClassDatabase.h"

#include "plugin/contract/ClassIds.h"

namespace engine {

namespace {

struct DefaultClass {
    const char* name;
    const char* base;
    const char* description;
};

constexpr DefaultClass kDefaultClasses[] = {
    {"EditorObject", "", "Anything that stands in a level"},
    {ClassName::Mesh, "EditorObject", "An object with a mesh"},
    {"SkinnedMeshObject", ClassName::Mesh, "A mesh with bones and animation sequences"},
    {"EmptyObject", "EditorObject", "A place and a direction without a body"},
    {"SoundEmitter", "EditorObject", "A place that a sound comes from"},
    {kCameraClass, "EditorObject", "A camera that views look through"},
    {kLabelClass, "EditorObject", "A text in the editor's views"},
    {ClassName::Gizmo, "EditorObject", "A handle that moves other objects"},
    {ClassName::Helper, "EditorObject", "An object of the editor alone"},
    {ClassName::HelperCwO, ClassName::Helper, "A helper with objects of its own"},
    {ClassName::GLLight, ClassName::Helper, "A light of a film"},
    {ClassName::DynLight, ClassName::Helper, "A dynamic light of a film"},
    {ClassName::VirtualObject, ClassName::Helper, "An object that exists for films only"},
    {ClassName::CameraPosition, ClassName::Helper, "The eye of a film camera"},
    {ClassName::CameraTarget, ClassName::Helper, "What a film camera looks at"},
    {ClassName::CameraControlPoint, ClassName::Helper, "A handle of a film camera's path"},
};

} // namespace

ClassDatabase::ClassDatabase() {
    for (const DefaultClass& entry : kDefaultClasses) {
        Add(entry.name, entry.base, entry.description);
    }
}

ClassDatabase::~ClassDatabase() {
    for (CClassDefinition* definition : classes) {
        delete definition;
    }
}

CClassDefinition& ClassDatabase::Add(const std::string& name, const std::string& baseName,
                                     const std::string& description) {
    auto* definition = new CClassDefinition;
    classes.push_back(definition);
    definition->name = name;
    definition->description = description;
    if (!baseName.empty()) {
        definition->baseNames.push_back(baseName);
    }
    return *definition;
}

const CClassDefinition* ClassDatabase::Find(const std::string& name) const {
    for (const CClassDefinition* definition : classes) {
        if (definition->name == name) {
            return definition;
        }
    }
    return nullptr;
}

bool ClassDatabase::IsDerivedFrom(const std::string& name, const std::string& baseName) const {
    return IsClassDerivedFrom(this, name, baseName);
}

const ClassDatabase& DefaultClasses() {
    static const ClassDatabase database;
    return database;
}

bool IsLightClass(const std::string& className) {
    return DefaultClasses().IsDerivedFrom(className, ClassName::GLLight) ||
           DefaultClasses().IsDerivedFrom(className, ClassName::DynLight);
}

bool IsCameraPointClass(const std::string& className) {
    return className == ClassName::CameraPosition || className == ClassName::CameraTarget ||
           className == ClassName::CameraControlPoint;
}

} // namespace engine
