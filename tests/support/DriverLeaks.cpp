// What the GL and sound drivers keep until the process ends is not ours to free; only their libraries are
// named here, so that leaks of our own code are still found.
extern "C" const char* __lsan_default_suppressions();

extern "C" const char* __lsan_default_suppressions() {
    return "leak:swrast_dri.so\n"
           "leak:libLLVM\n"
           "leak:libEGL_mesa.so\n"
           "leak:libgallium\n"
           "leak:libopenal.so\n"
           "leak:libpulse\n";
}
