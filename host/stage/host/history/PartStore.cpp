#include "host/stage/host/history/PartStore.h"

#include "host/engine/Level.h"

#include <functional>

namespace stage {

namespace {

std::uint64_t Mixed(std::uint64_t hash, std::uint64_t value) {
    constexpr std::uint64_t kOdd = 0x9E3779B97F4A7C15; // spreads the bits; any odd number of this size does
    hash = (hash ^ value) * kOdd;
    return hash ^ hash >> 32;
}

std::uint64_t HashOf(const engine::PartKey& key, std::string_view bytes) {
    std::uint64_t hash = Mixed(1, static_cast<std::uint64_t>(key.kind));
    hash = Mixed(hash, static_cast<std::uint64_t>(key.id));
    hash = Mixed(hash, key.track);
    hash = Mixed(hash, static_cast<std::uint64_t>(key.keys));
    return Mixed(hash, std::hash<std::string_view>{}(bytes));
}

} // namespace

void PartStore::Hash(const engine::PartKey& key, Part& part) {
    part.hash = HashOf(key, part.bytes);
    (engine::IsLook(key) ? lookHash : workHash) ^= part.hash;
}

void PartStore::Unhash(const engine::PartKey& key, const Part& part) {
    (engine::IsLook(key) ? lookHash : workHash) ^= part.hash;
}

class PartStore::Sink : public engine::IPartSink {
public:
    Sink(PartStore& partStore, Look partLook) : store(partStore), look(partLook) {}

    bool Wants(const engine::PartKey& key, std::uint64_t version) override {
        const auto found = store.parts.find(key);
        if (found == store.parts.end()) {
            return true;
        }
        found->second.seen = store.updates;
        return look == Look::All || version == 0 || found->second.version != version;
    }

    void Take(const engine::PartKey& key, std::uint64_t version, std::string_view bytes) override {
        const auto [place, isNew] = store.parts.try_emplace(key);
        Part& part = place->second;
        part.seen = store.updates;
        part.version = version;
        if (!isNew && part.bytes == bytes) {
            return;
        }
        PartChange change{key, {}, std::string(bytes)};
        if (!isNew) {
            store.Unhash(key, part);
            change.before = std::move(part.bytes);
        }
        part.bytes = std::string(bytes);
        store.Hash(key, part);
        changes.push_back(std::move(change));
    }

    PartChanges changes;

private:
    PartStore& store;
    Look look;
};

class PartStore::HashSink : public engine::IPartSink {
public:
    HashSink(const PartStore& partStore, Look partLook) : store(partStore), look(partLook) {}

    bool Wants(const engine::PartKey& key, std::uint64_t version) override {
        const auto found = store.parts.find(key);
        const bool isKnown = found != store.parts.end() && look == Look::Told && version != 0 &&
                             found->second.version == version;
        hash ^= isKnown ? found->second.hash : 0;
        return !isKnown;
    }
    void Take(const engine::PartKey& key, std::uint64_t /*version*/, std::string_view bytes) override {
        hash ^= HashOf(key, bytes);
    }

    std::uint64_t hash = 0;

private:
    const PartStore& store;
    Look look;
};

std::uint64_t PartStore::HashNow(engine::Level& level, Look look) const {
    HashSink sink(*this, look);
    engine::ReadLevelParts(level, sink);
    return sink.hash;
}

PartChanges PartStore::Update(engine::Level& level, Look look) {
    ++updates;
    Sink sink(*this, look);
    engine::ReadLevelParts(level, sink);
    for (auto place = parts.begin(); place != parts.end();) {
        if (place->second.seen == updates) {
            ++place;
            continue;
        }
        Unhash(place->first, place->second);
        sink.changes.push_back({place->first, std::move(place->second.bytes), {}});
        place = parts.erase(place);
    }
    return std::move(sink.changes);
}

void PartStore::Set(const engine::PartKey& key, std::optional<std::string> bytes) {
    const auto found = parts.find(key);
    if (found != parts.end()) {
        Unhash(key, found->second);
        parts.erase(found);
    }
    if (bytes) {
        Part& part = parts[key];
        part.bytes = std::move(*bytes);
        Hash(key, part);
    }
}

void PartStore::Clear() {
    parts.clear();
    workHash = lookHash = 0;
}

std::optional<std::string_view> PartStore::Find(const engine::PartKey& key) const {
    const auto found = parts.find(key);
    return found != parts.end() ? std::optional<std::string_view>(found->second.bytes) : std::nullopt;
}

engine::PartSource PartStore::Source() const {
    return [this](const engine::PartKey& key) { return Find(key); };
}

std::size_t PartStore::Size() const {
    std::size_t size = 0;
    for (const auto& [key, part] : parts) {
        size += sizeof key + sizeof part + part.bytes.capacity() + 4 * sizeof(void*); // a node's links
    }
    return size;
}

} // namespace stage
