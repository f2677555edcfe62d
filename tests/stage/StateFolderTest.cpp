#include "host/stage/host/StateFolder.h"
#include "host/engine/LevelRoot.h"
#include "tests/stage/HostFixture.h"
#include "tests/support/TempFolder.h"

#include <cstdlib>
#include <filesystem>
#include <optional>

namespace {

/// Sets a variable of the environment, or takes it out, for a while.
class Variable {
public:
    Variable(const char* variable, const char* value) : name(variable) {
        if (const char* present = std::getenv(name)) {
            before = present;
        }
        Set(value);
    }
    ~Variable() { Set(before.has_value() ? before->c_str() : nullptr); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    void Set(const char* value) { value != nullptr ? setenv(name, value, 1) : unsetenv(name); }

    const char* name;
    std::optional<std::string> before;
};

} // namespace

TEST(StateFolderTest, StandsInTheFolderThatTheUserNamesAndIsMadeForTheUserAlone) {
    namespace fs = std::filesystem;
    TempFolder folder;
    const Variable state("XDG_STATE_HOME", folder.File("state").c_str());
    EXPECT_EQ(stage::UserStateFolder(), folder.File("state/stage"));
    EXPECT_EQ(fs::status(folder.File("state/stage")).permissions(), fs::perms::owner_all);
    EXPECT_EQ(stage::UserStateFolder(), folder.File("state/stage"));
}

TEST(StateFolderTest, StandsBelowTheHomeFolderOtherwise) {
    TempFolder folder;
    const Variable home("HOME", folder.Path().c_str());
    for (const char* useless : {static_cast<const char*>(nullptr), "", "state"}) {
        const Variable state("XDG_STATE_HOME", useless);
        EXPECT_EQ(stage::UserStateFolder(), folder.File(".local/state/stage"));
    }
}

class UnsavedFolderTest : public HostFixture {};

TEST_F(UnsavedFolderTest, ALevelWithoutAFolderHasTheHostsStateFolderAsItsRootsName) {
    stage::EditorHost other(windows, {"data", "data/helpers", "", "/state/stage"});
    other.level.New("");
    EXPECT_EQ(other.level.Data()->Root().name, "/state/stage/");
    other.Shutdown();
}
