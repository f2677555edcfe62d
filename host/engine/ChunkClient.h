#pragma once

#include "plugin/contract/Plugin.h"

#include <vector>

namespace engine {

/// What level files need of the plug-ins. Errors come out of it as exceptions.
class IChunkClient {
public:
    virtual ~IChunkClient() = default;
    /// Sends event 20: the plug-ins name the objects that they keep themselves.
    virtual void CollectHiddenObjects(IObjectCollection& collection) = 0;
    virtual void SaveChunks(fs::file& file, IHostObject* object) = 0;
    /// Reads one chunk that IsOwnChunk claimed.
    virtual void LoadChunk(IHostObject* object, fs::file& file, std::uint16_t id, std::uint32_t size) = 0;
    virtual bool IsOwnChunk(std::uint16_t id) = 0;
};

/// The chunk client over a list of plug-ins, asked in their order. The plug-ins are not owned.
class PluginChunkClient : public IChunkClient {
public:
    void CollectHiddenObjects(IObjectCollection& collection) override;
    void SaveChunks(fs::file& file, IHostObject* object) override;
    void LoadChunk(IHostObject* object, fs::file& file, std::uint16_t id, std::uint32_t size) override;
    bool IsOwnChunk(std::uint16_t id) override;

    std::vector<IPlugin*> plugins;
};

} // namespace engine
