#include "plugin/contract/File.h"
#include "tests/support/Paths.h"
#include "tests/whole/StageFixture.h"

#include <dlfcn.h>

namespace {

class LoadedPluginTest : public StageTest {};

} // namespace

TEST_F(LoadedPluginTest, EntryPointIsFoundByName) {
    void* library = dlopen(BuiltLibrary("films.so").c_str(), RTLD_NOW | RTLD_NOLOAD);
    ASSERT_NE(library, nullptr);
    EXPECT_NE(dlsym(library, "InitializeMe"), nullptr);
    EXPECT_EQ(dlsym(library, "_Z9GetPluginv"), nullptr); // nothing else of its own
    dlclose(library);
}

TEST_F(LoadedPluginTest, FileErrorsOfThePluginAreCaughtOutsideOfIt) {
    fs::file closed;
    closed.handle = 0x7FFF0000; // no such file
    for (const auto* entry : window->host.plugins.Entries()) {
        try {
            entry->plugin->SaveChunks(closed, &Films());
            entry->plugin->LoadChunk(nullptr, closed, 5785, 100);
            FAIL() << "nothing was thrown";
        } catch (const fs::file_exception& error) {
            EXPECT_EQ(error.code, fs::file_exception::kRead);
            EXPECT_STREQ(error.what(), "Error reading file");
        }
    }
}
