#include "host/engine/ChunkClient.h"

#include "plugin/contract/EventCodes.h"

namespace engine {

void PluginChunkClient::CollectHiddenObjects(IObjectCollection& collection) {
    HiddenObjectsRequest request{&collection};
    for (IPlugin* plugin : plugins) {
        plugin->OnEvent(EventCode::CollectHiddenObjects, &request);
    }
}

void PluginChunkClient::SaveChunks(fs::file& file, IHostObject* object) {
    for (IPlugin* plugin : plugins) {
        // Required: the answer is not used. A plug-in answers false for the root after writing everything.
        plugin->SaveChunks(file, object);
    }
}

void PluginChunkClient::LoadChunk(IHostObject* object, fs::file& file, std::uint16_t id, std::uint32_t size) {
    for (IPlugin* plugin : plugins) {
        if (plugin->IsOwnChunk(0, id)) {
            plugin->LoadChunk(object, file, id, size);
            return;
        }
    }
}

bool PluginChunkClient::IsOwnChunk(std::uint16_t id) {
    for (IPlugin* plugin : plugins) {
        if (plugin->IsOwnChunk(0, id)) {
            return true;
        }
    }
    return false;
}

} // namespace engine
