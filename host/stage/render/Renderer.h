#pragma once

#include "host/stage/render/CameraMath.h"
#include "host/stage/render/RenderScene.h"

#include <memory>
#include <string>

namespace render {

/// Draws scenes into pictures, without a window. One renderer serves all views: it owns one GL context,
/// which it makes current in each operation. One thread. The same scene gives
/// the same bytes, unless shadows lag.
class Renderer {
public:
    /// Null, with a reason in `error`, on a machine without a usable GL driver.
    static std::unique_ptr<Renderer> Create(std::string& error);
    ~Renderer();
    Renderer(const Renderer&) = delete;
    Renderer& operator=(const Renderer&) = delete;

    enum class Shadows {
        Exact,
        Lagging ///< they stay until the sun has turned by a quarter of a degree: one of many pictures
    };
    /// Takes the scene of the next views and draws its shadow map. The scene must stay as it is until the
    /// last of them is drawn.
    void BeginFrame(const RenderScene& scene, Shadows shadows = Shadows::Exact);
    /// Draws the frame's scene as a camera sees it. `detail` is how many pixels are drawn for one of the
    /// picture, along a side: 1, up to 2 for smooth edges at four times the work, down to 0.5 for speed. A
    /// camera that is not finite gives a plain picture. False, with an empty picture, for a size that the
    /// driver refuses.
    bool DrawView(const RenderCamera& camera, int width, int height, RenderImage& image, float detail = 1.0f);

private:
    struct Parts;
    explicit Renderer(std::unique_ptr<Parts> made);

    std::unique_ptr<Parts> parts;
};

} // namespace render
