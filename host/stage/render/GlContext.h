#pragma once

#include <string>

namespace render {

/// A GL 3.3 core context without a window or a display server, through EGL.
class GlContext {
public:
    GlContext() = default;
    ~GlContext();
    GlContext(const GlContext&) = delete;
    GlContext& operator=(const GlContext&) = delete;

    /// False with a reason in `error` if the machine has no usable driver.
    bool Create(std::string& error);
    bool MakeCurrent() const;

private:
    void* display = nullptr;
    void* context = nullptr;
};

} // namespace render
