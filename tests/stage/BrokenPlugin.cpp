// A shared library that is no plug-in: it exports something else.
extern "C" int NotAPlugin();
extern "C" int NotAPlugin() {
    return 0;
}
