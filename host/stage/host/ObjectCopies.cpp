#include "host/stage/host/ObjectCopies.h"

#include "host/engine/ByteStream.h"
#include "host/engine/References.h"
#include "host/engine/Shape.h"
#include "host/engine/UniqueNames.h"
#include "host/stage/host/EditorHost.h"
#include "host/stage/host/LevelSession.h"
#include "host/stage/host/SelectedIds.h"
#include "plugin/contract/EventCodes.h"

#include <algorithm>
#include <map>

namespace stage {

namespace {

constexpr std::string_view kMark = "Stage objects 2";
constexpr int kNoParent = -1;

struct CopiedObject {
    engine::ObjectSpec spec;
    std::int32_t objectKind = 0;
    std::int32_t parent = kNoParent; ///< place in the list
    std::uint8_t visible = 1;
    std::optional<engine::LightProperties> light;
};

void Write(engine::ByteWriter& out, const engine::SceneObject& object, int parent) {
    out.Text(object.Info().className);
    out.Text(object.name);
    out.Text(object.meshName);
    out.Floats(object.World().m, 16);
    out.I32(object.objectKind);
    out.I32(parent);
    out.U8(object.visible);
    out.U8(object.notes.locked ? 1 : 0);
    out.F32(object.notes.fieldOfView);
    out.Text(object.notes.text);
    out.U8(object.light ? 1 : 0);
    const engine::LightProperties light = object.light.value_or(engine::LightProperties());
    out.Floats(light.color.Data(), 3);
    out.F32(light.range);
    out.F32(light.intensity);
    out.U8(light.on ? 1 : 0);
}

CopiedObject Read(engine::ByteReader& in) {
    CopiedObject copied;
    copied.spec.className = in.Text();
    copied.spec.name = in.Text();
    copied.spec.meshName = in.Text();
    in.Floats(copied.spec.matrix.m, 16);
    copied.objectKind = in.I32();
    copied.parent = in.I32();
    copied.visible = in.U8();
    copied.spec.notes.locked = in.U8() != 0;
    copied.spec.notes.fieldOfView = in.F32();
    copied.spec.notes.text = in.Text();
    const bool shines = in.U8() != 0;
    engine::LightProperties light;
    in.Floats(light.color.Data(), 3);
    light.range = in.F32();
    light.intensity = in.F32();
    light.on = in.U8() != 0;
    if (shines) {
        copied.light = light;
    }
    return copied;
}

/// The name that leads to the same file from the open level.
std::string NamedFrom(const std::string& name, const std::string& from, const std::string& to) {
    if (name.empty() || from == to || engine::ShapeOf(name)) {
        return name;
    }
    return to.empty() ? engine::ReferencePath(from, name) : engine::RebasedReference(name, from, to);
}

/// A group, with the places of its members in the list.
struct CopiedGroup {
    std::string name;
    std::vector<std::uint32_t> members;
};

void WriteGroups(engine::ByteWriter& out, const engine::LevelData& data,
                 const std::vector<engine::SceneObject*>& objects) {
    std::vector<CopiedGroup> groups;
    std::map<const engine::Group*, std::size_t> known;
    for (std::uint32_t i = 0; i < objects.size(); ++i) {
        if (const engine::Group* group = data.GroupOf(objects[i])) {
            const auto place = known.emplace(group, groups.size()).first;
            if (place->second == groups.size()) {
                groups.push_back({group->name, {}});
            }
            groups[place->second].members.push_back(i);
        }
    }
    out.U32(static_cast<std::uint32_t>(groups.size()));
    for (const CopiedGroup& group : groups) {
        out.Text(group.name);
        out.U32(static_cast<std::uint32_t>(group.members.size()));
        for (const std::uint32_t member : group.members) {
            out.U32(member);
        }
    }
}

std::vector<CopiedGroup> ReadGroups(engine::ByteReader& in) {
    std::vector<CopiedGroup> groups;
    for (std::uint32_t left = in.U32(); left > 0 && in.Good(); --left) {
        CopiedGroup group{in.Text(), {}};
        for (std::uint32_t members = in.U32(); members > 0 && in.Good(); --members) {
            group.members.push_back(in.U32());
        }
        groups.push_back(std::move(group));
    }
    return groups;
}

/// Groups of one object, or of none, are left out.
void MakeGroups(engine::LevelData& data, const std::vector<CopiedGroup>& groups,
                const std::vector<engine::SceneObject*>& made) {
    for (const CopiedGroup& group : groups) {
        std::vector<engine::SceneObject*> members;
        for (const std::uint32_t place : group.members) {
            members.push_back(place < made.size() ? made[place] : nullptr);
        }
        data.MakeGroup(data.FreeGroupName(group.name), members);
    }
}

/// All of them, or none if the bytes don't hold together.
std::vector<CopiedObject> ReadAll(std::string_view bytes, std::string& folder,
                                  std::vector<CopiedGroup>& groups) {
    engine::ByteReader in(bytes);
    if (in.Text() != kMark) {
        return {};
    }
    folder = in.Text();
    std::vector<CopiedObject> copied;
    for (std::uint32_t left = in.U32(); left > 0 && in.Good(); --left) {
        copied.push_back(Read(in));
    }
    groups = ReadGroups(in);
    return in.Good() ? copied : std::vector<CopiedObject>();
}

} // namespace

std::string CopyObjects(const engine::Level& level, const std::vector<engine::SceneObject*>& objects) {
    std::vector<engine::SceneObject*> kept = objects;
    std::erase_if(kept, [](const engine::SceneObject* object) {
        return object->transient || object->savedAsObject == 0 || !engine::IsFinite(object->World());
    });
    std::string bytes;
    engine::ByteWriter out(bytes);
    out.Text(kMark);
    out.Text(level.Folder());
    out.U32(static_cast<std::uint32_t>(kept.size()));
    for (const engine::SceneObject* object : kept) {
        const auto parent = std::ranges::find(kept, object->Parent());
        Write(out, *object, parent == kept.end() ? kNoParent : static_cast<int>(parent - kept.begin()));
    }
    if (kept.empty()) {
        return {};
    }
    WriteGroups(out, *level.Data(), kept);
    return bytes;
}

int PasteObjects(EditorHost& host, LevelSession& session, std::string_view bytes) {
    std::string folder;
    std::vector<CopiedGroup> groups;
    std::vector<CopiedObject> copied = ReadAll(bytes, folder, groups);
    std::vector<engine::SceneObject*> made;
    if (host.level.Data() == nullptr || copied.empty()) {
        return 0;
    }
    engine::UniqueNames names(*host.level.Data());
    for (CopiedObject& source : copied) {
        if (host.classes.Find(source.spec.className) == nullptr || !engine::IsFinite(source.spec.matrix)) {
            made.push_back(nullptr); // of another program's classes; the places in the list stay
            continue;
        }
        source.spec.meshName = NamedFrom(source.spec.meshName, folder, host.level.Folder());
        engine::SceneObject* object = host.level.CreateObject(source.spec, &names);
        object->objectKind = source.objectKind;
        object->visible = source.visible;
        object->light = object->light ? source.light.value_or(*object->light) : object->light;
        made.push_back(object);
    }
    for (std::size_t i = 0; i < made.size(); ++i) {
        const int parent = copied[i].parent;
        if (made[i] != nullptr && parent >= 0 && static_cast<std::size_t>(parent) < made.size()) {
            host.level.SetParent(made[i], made[static_cast<std::size_t>(parent)]);
        }
    }
    MakeGroups(*host.level.Data(), groups, made);
    std::erase(made, nullptr);
    if (made.empty()) {
        return 0;
    }
    session.History().Tell({Deed::Kind::Paste, IdsOf(made)});
    host.Select(ObjectList(made.begin(), made.end()));
    host.plugins.SendEvent(EventCode::ObjectsCreated, nullptr);
    session.MarkChanged();
    host.windows.ObjectsChanged();
    host.RedrawViews();
    return static_cast<int>(made.size());
}

} // namespace stage
