#include "plugin/parts/CommandTable.h"

#include "framework/Resource.h"
#include "plugin/base/PluginResources.h"
#include "plugin/rules/LocalCommands.h"
#include "resources/resource.h"

namespace {

struct CommandResource {
    std::uint32_t resource;
    std::uint32_t local;
    bool hasText; ///< told by TextOfCommand
};

constexpr CommandResource kCommandResources[] = {
    {IDC_MOVIES, LocalCommand::Movies, true},
    {IDC_ANIMATE_OBJECT, LocalCommand::AnimateObject, true},
    {IDC_CREATE_CAMERA_FRAME, LocalCommand::CreateCameraFrame, true},
    {IDC_TO_VIRTUAL_OBJECT, LocalCommand::ToVirtualObject, true},
    {IDC_TO_NORMAL_OBJECT, LocalCommand::ToNormalObject, true},
    {IDC_ATTACH_MOVIE, LocalCommand::AttachMovie, false},
    {IDC_DETACH_MOVIE, LocalCommand::DetachMovie, false},
    {IDC_SET_LINK_OBJECT, LocalCommand::SetLinkObject, false},
    {IDC_ATTACH_TO_OBJECT, LocalCommand::AttachObject, false},
};

} // namespace

std::uint32_t CommandIdFromResource(std::uint32_t resourceId, PluginCommandId plugin) {
    if (resourceId == 0) {
        return 0;
    }
    for (const CommandResource& entry : kCommandResources) {
        if (entry.resource == resourceId) {
            return plugin.WithLocal(entry.local).word;
        }
    }
    return plugin.WithLocal(0).word;
}

std::string TextOfCommand(std::uint32_t localCommand) {
    for (const CommandResource& entry : kCommandResources) {
        if (entry.local == localCommand && entry.hasText) {
            const ResourceScope resources(PluginResources());
            return LoadString(entry.resource);
        }
    }
    return {};
}
