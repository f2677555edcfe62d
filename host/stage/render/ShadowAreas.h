#pragma once

#include "host/stage/render/FrameItems.h"

#include <vector>

namespace render {

/// A rectangle of the shadow map's texels, `right` and `top` outside of it.
struct ShadowArea {
    int left = 0;
    int bottom = 0;
    int right = 0;
    int top = 0;

    bool IsEmpty() const { return left >= right || bottom >= top; }
    bool Meets(const ShadowArea& other) const;
    /// Grows around the other.
    void Join(const ShadowArea& other);
};

/// Remembers what stands in a shadow map and tells which parts of it a frame has to draw anew: those where a
/// caster was or is that has moved. What is drawn there is what a whole new map would hold.
class ShadowAreas {
public:
    /// `size` is the map's, in texels a side.
    explicit ShadowAreas(int size) : mapSize(size) {}

    /// Takes the casters of a frame under the map's world to clip matrix. Empty if nothing has to be drawn;
    /// one area with the whole map if the light, the list of casters or a large share of it changed.
    std::vector<ShadowArea> Update(const std::vector<FrameItem>& items, const glm::mat4& projection);
    /// The casters of the last frame that stand in an area; they live as long as its items.
    std::vector<const FrameItem*> CastersIn(const ShadowArea& area) const;
    /// What a box covers of the map, with a border that the filter of its texels reaches.
    ShadowArea AreaOf(const mesh::MeshBox& world, const glm::mat4& projection) const;
    ShadowArea WholeMap() const { return {0, 0, mapSize, mapSize}; }

private:
    struct Caster {
        std::weak_ptr<const mesh::Mesh> mesh;
        glm::mat4 world{1.0f};
        std::vector<glm::mat4> nodes; ///< of its pose; empty for the rest pose
        ShadowArea area;
        const FrameItem* entry = nullptr; ///< of this frame
    };

    static bool IsSame(const Caster& caster, const RenderItem& item);
    std::vector<ShadowArea> Whole(const std::vector<const FrameItem*>& shown);
    void Take(Caster& caster, const FrameItem& entry) const;

    int mapSize;
    glm::mat4 drawnProjection{0.0f};
    std::vector<Caster> casters; ///< in the order of the frame's items
};

} // namespace render
