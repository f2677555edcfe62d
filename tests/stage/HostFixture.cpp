#include "tests/stage/HostFixture.h"

HostFixture::HostFixture() : host(windows, {"data", "data/helpers"}) {
    using ::testing::_;
    using ::testing::AnyNumber;
    using ::testing::Return;
    unsigned number = 1;
    for (MockPlugin* plugin : {&first, &second}) {
        plugin->id = PluginCommandId::FromPluginNumber(number++);
        host.plugins.Add("mock", plugin);
        host.AddListenerA(plugin);
        host.AddListenerB(plugin);
        ON_CALL(*plugin, CanDeleteObjects(_, _)).WillByDefault(Return(true));
        EXPECT_CALL(*plugin, OnEvent(_, _)).Times(AnyNumber());
        EXPECT_CALL(*plugin, OnViewRequest(_, _, _, _)).Times(AnyNumber());
    }
    host.StartPlugins();
    host.level.New("");
}

HostFixture::~HostFixture() {
    // What the shutdown calls is no test's business but its own.
    ::testing::Mock::VerifyAndClearExpectations(&first);
    ::testing::Mock::VerifyAndClearExpectations(&second);
    host.Shutdown();
}
