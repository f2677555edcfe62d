#include "host/stage/render/Renderer.h"

#include "host/engine/Units.h"
#include "host/stage/render/FrameBlock.h"
#include "host/stage/render/FrameItems.h"
#include "host/stage/render/GlContext.h"
#include "host/stage/render/GroundGrid.h"
#include "host/stage/render/LinePass.h"
#include "host/stage/render/MeshPass.h"
#include "host/stage/render/OutlinePass.h"
#include "host/stage/render/RenderTarget.h"
#include "host/stage/render/ShadowMap.h"
#include "host/stage/render/SkyPass.h"
#include "processor/UpperHalves.h"

#include <algorithm>
#include <epoxy/gl.h>
#include <stdexcept>

namespace render {

namespace {

constexpr glm::vec3 kOutlineColor(1.0f, 0.62f, 0.10f);
/// Of flat views and wireframes, as on the screen.
constexpr glm::vec3 kPlainBackground(0.62f, 0.66f, 0.70f);
/// Shadows reach this far around what the first casters span; beyond, texels would grow too coarse.
constexpr float kMaxShadowExtent = engine::Metres(160.0f);
constexpr float kLeastDetail = 0.5f;
constexpr float kMostDetail = 2.0f;
constexpr float kShadowStep = engine::Metres(8.0f);
/// Radians that lagging shadows are behind at most: 4 cm of the shadow of a house of 10 m, which is half a
/// texel of the sample level's map.
constexpr float kMostLag = glm::radians(0.25f);

glm::vec3 SunDirection(const RenderSun& sun) {
    const float length = glm::length(sun.direction);
    return length > 0.0f && std::isfinite(length) ? sun.direction / length : glm::vec3(0.0f, 1.0f, 0.0f);
}

FrameBlock MakeBlock(const RenderScene& scene, const RenderCamera& camera) {
    FrameBlock block{};
    block.viewProjection = camera.projection * camera.view;
    block.inverseViewProjection = glm::inverse(block.viewProjection);
    block.eye = glm::vec4(glm::vec3(glm::inverse(camera.view)[3]), scene.seconds);
    block.sunDirection = glm::vec4(SunDirection(scene.sun), 0.0f);
    block.sunColor = glm::vec4(scene.sun.color, scene.exposure);
    block.zenith = glm::vec4(scene.sky.zenith, scene.sky.fog);
    block.horizon = glm::vec4(scene.sky.horizon, scene.sky.clouds);
    block.ground = glm::vec4(scene.sky.ground, 0.0f);
    return block;
}

mesh::MeshBox CasterBox(const std::vector<FrameItem>& items) {
    mesh::MeshBox box;
    for (const FrameItem& entry : items) {
        if (entry.item->castsShadow) {
            box.Add(entry.box.min);
            box.Add(entry.box.max);
        }
    }
    if (box.IsEmpty()) {
        box.Add(glm::vec3(0.0f));
    }
    // In steps: the map of a scene in which something moves is the same from frame to frame.
    const glm::vec3 center = glm::floor(box.Center() / kShadowStep) * kShadowStep;
    box.min = glm::max(glm::floor(box.min / kShadowStep) * kShadowStep, center - kMaxShadowExtent * 0.5f);
    box.max = glm::min(glm::ceil(box.max / kShadowStep) * kShadowStep, center + kMaxShadowExtent * 0.5f);
    return box;
}

} // namespace

/// Everything that lives in the context; destroyed while it is current.
struct Renderer::Parts {
    GlContext context;
    struct Passes {
        Passes() { glGenBuffers(1, &frameBuffer); }
        ~Passes() { glDeleteBuffers(1, &frameBuffer); }
        Passes(const Passes&) = delete;
        Passes& operator=(const Passes&) = delete;

        SkyPass sky;
        MeshPass meshes;
        LinePass lines;
        OutlinePass outline;
        ShadowMap shadow;
        ShadowAreas shadowAreas{ShadowMap::kSize};
        RenderTarget target;
        unsigned frameBuffer = 0;
    };
    std::unique_ptr<Passes> passes;
    const RenderScene* scene = nullptr;
    std::vector<FrameItem> items;
    glm::vec3 shadowSun{0.0f}; ///< the direction that the map was drawn for

    void TurnShadowSun(Shadows shadows) {
        const glm::vec3 sun = SunDirection(scene->sun);
        // The length of the way between two unit vectors is their angle, where it is this small.
        if (shadows == Shadows::Exact || !(glm::distance(sun, shadowSun) < kMostLag)) {
            shadowSun = sun;
        }
    }

    /// What has not moved since the last frame stays in the map.
    void DrawShadows() {
        passes->shadow.Begin(CasterBox(items), shadowSun);
        const glm::mat4& projection = passes->shadow.Projection();
        for (const ShadowArea& area : passes->shadowAreas.Update(items, projection)) {
            ShadowMap::BeginArea(area);
            passes->meshes.DrawDepth(passes->shadowAreas.CastersIn(area), projection);
        }
        ShadowMap::End();
    }

    void UploadBlock(const FrameBlock& block) const {
        glBindBuffer(GL_UNIFORM_BUFFER, passes->frameBuffer);
        glBufferData(GL_UNIFORM_BUFFER, sizeof(block), &block, GL_STREAM_DRAW);
        glBindBufferBase(GL_UNIFORM_BUFFER, GlProgram::kFrameBinding, passes->frameBuffer);
    }

    /// The pixels that the rims can reach; empty when nothing is outlined.
    OutlinePass::Area OutlineArea(const glm::mat4& viewProjection, int margin) const {
        mesh::MeshBox seen;
        for (const FrameItem& entry : items) {
            if (entry.item->outline) {
                AddScreenBox(entry.box, viewProjection, seen);
            }
        }
        if (seen.IsEmpty()) {
            return {};
        }
        const glm::vec2 size(passes->target.Width(), passes->target.Height());
        const glm::vec2 edge(static_cast<float>(margin));
        const glm::vec2 low =
            glm::clamp((glm::vec2(seen.min) * 0.5f + 0.5f) * size - edge, glm::vec2(0.0f), size);
        const glm::vec2 high =
            glm::clamp((glm::vec2(seen.max) * 0.5f + 0.5f) * size + edge, glm::vec2(0.0f), size);
        return {static_cast<int>(low.x), static_cast<int>(low.y), static_cast<int>(high.x - low.x) + 1,
                static_cast<int>(high.y - low.y) + 1};
    }

    void DrawOutline(const glm::mat4& viewProjection, float detail) const {
        const int radius = std::max(static_cast<int>(std::lround(2.0f * detail)), 1);
        const OutlinePass::Area area = OutlineArea(viewProjection, radius + 1);
        if (area.width == 0) {
            return;
        }
        passes->outline.BeginMask(passes->target.Width(), passes->target.Height(), area, radius + 1);
        passes->meshes.DrawMask(items, viewProjection);
        passes->target.Bind();
        passes->outline.Draw(kOutlineColor, static_cast<float>(radius));
    }

    void DrawLines(const RenderCamera& camera, float detail) const {
        if (scene->grid == RenderGrid::Ground) {
            passes->lines.Draw(GroundGrid(glm::vec3(glm::inverse(camera.view)[3])), detail,
                               /*depthTest*/ true);
        }
        passes->lines.Draw(scene->lines, detail, /*depthTest*/ true);
        passes->lines.Draw(scene->overlay, detail, /*depthTest*/ false);
    }

    void DrawScene(const RenderCamera& camera, const glm::mat4& viewProjection, float detail) const {
        FrameBlock block = MakeBlock(*scene, camera);
        const glm::vec2 size(passes->target.Width(), passes->target.Height());
        block.viewport = glm::vec4(size, 1.0f / size);
        block.shadow = passes->shadow.TextureMatrix();
        UploadBlock(block);
        if (!scene->plainBackground) {
            passes->sky.Prepare(passes->target.Width(), passes->target.Height());
        }
        passes->target.Bind();
        if (scene->grid != RenderGrid::Ground) {
            passes->lines.Draw(FlatGrid(scene->grid, camera), detail,
                               /*depthTest*/ false);
        }
        if (scene->style == RenderStyle::Wireframe) {
            passes->meshes.DrawWires(items, viewProjection);
        } else {
            passes->meshes.DrawLit(
                items, *scene,
                {viewProjection, glm::vec3(block.eye), passes->shadow.Texture(), detail > 1.0f});
        }
        if (!scene->plainBackground) {
            passes->sky.Draw();
        }
        DrawOutline(viewProjection, detail);
        DrawLines(camera, detail);
    }
};

Renderer::Renderer(std::unique_ptr<Parts> made) : parts(std::move(made)) {
}

Renderer::~Renderer() {
    if (parts->context.MakeCurrent()) {
        parts->passes.reset();
    }
}

std::unique_ptr<Renderer> Renderer::Create(std::string& error) {
    auto parts = std::make_unique<Parts>();
    if (!parts->context.Create(error)) {
        return nullptr;
    }
    try {
        parts->passes = std::make_unique<Parts::Passes>();
    } catch (const std::runtime_error& failure) {
        error = failure.what();
        return nullptr;
    }
    return std::unique_ptr<Renderer>(new Renderer(std::move(parts)));
}

void Renderer::BeginFrame(const RenderScene& scene, Shadows shadows) {
    processor::ClearUpperHalves();
    parts->scene = &scene;
    parts->items = CollectItems(scene);
    if (!parts->context.MakeCurrent()) {
        return;
    }
    parts->passes->meshes.Prepare(parts->items);
    parts->TurnShadowSun(shadows);
    parts->DrawShadows();
}

bool Renderer::DrawView(const RenderCamera& camera, int width, int height, RenderImage& image, float detail) {
    image = RenderImage();
    const float drawn = std::isfinite(detail) ? std::clamp(detail, kLeastDetail, kMostDetail) : 1.0f;
    if (parts->scene == nullptr || !parts->context.MakeCurrent() ||
        !parts->passes->target.Resize(width, height, drawn)) {
        return false;
    }
    const glm::mat4 viewProjection = camera.projection * camera.view;
    parts->passes->target.Bind();
    const glm::vec3& back = parts->scene->plainBackground ? kPlainBackground : parts->scene->sky.horizon;
    glClearColor(back.r, back.g, back.b, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    if (IsFinite(viewProjection) && IsFinite(glm::inverse(viewProjection)) &&
        IsFinite(glm::inverse(camera.view))) {
        parts->DrawScene(camera, viewProjection, drawn);
    }
    parts->passes->target.Read(image);
    return true;
}

} // namespace render
