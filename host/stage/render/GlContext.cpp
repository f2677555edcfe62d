#include "host/stage/render/GlContext.h"

#include <epoxy/egl.h>
#include <epoxy/gl.h>

namespace render {

namespace {

EGLDisplay OpenDisplay() {
    if (epoxy_has_egl_extension(EGL_NO_DISPLAY, "EGL_MESA_platform_surfaceless")) {
        EGLDisplay display =
            eglGetPlatformDisplayEXT(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
        if (display != EGL_NO_DISPLAY && eglInitialize(display, nullptr, nullptr)) {
            return display;
        }
    }
    EGLDisplay display = eglGetDisplay(EGL_DEFAULT_DISPLAY);
    return display != EGL_NO_DISPLAY && eglInitialize(display, nullptr, nullptr) ? display : EGL_NO_DISPLAY;
}

EGLContext OpenContext(EGLDisplay display) {
    constexpr EGLint kConfig[] = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT,
                                  EGL_NONE};
    constexpr EGLint kContext[] = {EGL_CONTEXT_MAJOR_VERSION,
                                   3,
                                   EGL_CONTEXT_MINOR_VERSION,
                                   3,
                                   EGL_CONTEXT_OPENGL_PROFILE_MASK,
                                   EGL_CONTEXT_OPENGL_CORE_PROFILE_BIT,
                                   EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    if (!eglBindAPI(EGL_OPENGL_API) || !eglChooseConfig(display, kConfig, &config, 1, &count) || count == 0) {
        return EGL_NO_CONTEXT;
    }
    return eglCreateContext(display, config, EGL_NO_CONTEXT, kContext);
}

} // namespace

GlContext::~GlContext() {
    if (context != nullptr) {
        eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
        eglDestroyContext(display, context);
    }
    // The display is the process's own: others may use it, so it is never terminated.
}

bool GlContext::Create(std::string& error) {
    display = OpenDisplay();
    if (display == EGL_NO_DISPLAY) {
        error = "no EGL display: install a GL driver such as Mesa (libegl1, libgl1-mesa-dri)";
        return false;
    }
    context = OpenContext(display);
    if (context == EGL_NO_CONTEXT || !MakeCurrent()) {
        error = "the GL driver offers no OpenGL 3.3 core context without a window";
        return false;
    }
    return true;
}

bool GlContext::MakeCurrent() const {
    if (eglGetCurrentContext() == context) {
        return true;
    }
    return eglBindAPI(EGL_OPENGL_API) && eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, context);
}

} // namespace render
