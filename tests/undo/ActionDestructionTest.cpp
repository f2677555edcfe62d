// What goes with an action, and in which order.
#include "tests/undo/UndoFixture.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// A view that writes down its end.
class LoggingView : public CNullTimeTrackKey {
public:
    explicit LoggingView(std::vector<std::string>& calls) : log(calls) {}
    ~LoggingView() override { log.push_back("view"); }
    void SetRecord(IFilmKey* newRecord, bool takeTimes) override {
        log.push_back(std::string("SetRecord ") + (newRecord != nullptr ? "record" : "null") +
                      (takeTimes ? " true" : " false"));
        CNullTimeTrackKey::SetRecord(newRecord, takeTimes);
    }

private:
    std::vector<std::string>& log;
};

struct LoggingAction final : CFilmsUndoAction {
    explicit LoggingAction(std::vector<std::string>& calls) : log(calls) {}
    ~LoggingAction() override { log.push_back("child"); }
    bool Undo() override { return false; }
    bool Redo() override { return false; }

    std::vector<std::string>& log;
};

class ActionDestructionTest : public UndoTest {
protected:
    /// A view in no row that logs among the factory's calls.
    CTrackKey* NewLoggingView() {
        auto* view = new LoggingView(factory.log);
        view->CNullTimeTrackKey::SetRecord(Films().keyFactory->CreateKey(KeyKind::Position), false);
        return view;
    }
};

} // namespace

TEST_F(ActionDestructionTest, OwnedKeyGoesAfterItsRecordAndBeforeTheChildren) {
    auto action = Make<CFUADeleteKey>(NewLoggingView(), nullptr);
    action->children.push_back(new LoggingAction(factory.log));
    action->children.push_back(nullptr);
    StartWatching();
    action.reset();
    EXPECT_THAT(factory.log, ElementsAre("Destroy 10", "SetRecord null false", "view", "child"));
}

TEST_F(ActionDestructionTest, EveryHolderLetsGoFirst) {
    auto action = Make<CFUADeleteKey>(NewView(KeyKind::Position, 2.0f), nullptr);
    CTrackKey* view = action->key;
    CurrentKey() = view;
    timeline.SelectOnly(view);
    StartWatching();
    bool toldFirst = false;
    factory.onDestroy = [&] {
        toldFirst = timeline.forgottenViews == std::vector<CTrackKey*>{view} && CurrentKey() == nullptr;
    };
    action.reset();
    EXPECT_TRUE(toldFirst);
    EXPECT_THAT(timeline.selectedKeys, IsEmpty());
}

TEST_F(ActionDestructionTest, TheRecordOfATimedKeyIsDestroyedOnce) {
    const std::size_t records = RecordCount();
    auto action = Make<CFUADeleteKey>(NewView(KeyKind::Sound, 2.0f), nullptr);
    ASSERT_EQ(RecordCount(), records + 1);
    StartWatching();
    action.reset();
    EXPECT_THAT(factory.log, ElementsAre("Destroy 9"));
    EXPECT_EQ(RecordCount(), records);
}

TEST_F(ActionDestructionTest, AKeyWithoutARecordGoesAlone) {
    auto action = Make<CFUADeleteKey>(new LoggingView(factory.log), nullptr);
    StartWatching();
    action.reset();
    EXPECT_THAT(factory.log, ElementsAre("view"));
    EXPECT_EQ(timeline.forgottenViews.size(), 1U);
}

TEST_F(ActionDestructionTest, OnlyDeletedAndClonedKeysGoWithTheirAction) {
    CTrackKey* view = NewLoggingView();
    StartWatching();
    Make<CFUAAddKey>(view, nullptr).reset();
    Make<CFUAChangeSize>(view, nullptr).reset();
    Make<CFUAChangeAttribs>(view, nullptr).reset();
    EXPECT_THAT(factory.log, IsEmpty());
    EXPECT_THAT(timeline.forgottenViews, IsEmpty());
    Make<CFUACloneKey>(view, nullptr).reset();
    EXPECT_THAT(factory.log, ElementsAre("Destroy 10", "SetRecord null false", "view"));
}

TEST_F(ActionDestructionTest, AKeyThatIsNotOwnedMayBeGone) {
    CTrackKey* gone = new CNullTimeTrackKey;
    auto add = Make<CFUAAddKey>(gone, nullptr);
    auto size = Make<CFUAChangeSize>(gone, nullptr);
    auto attributes = Make<CFUAChangeAttribs>(gone, nullptr);
    delete gone;
    StartWatching();
    add.reset();
    size.reset();
    attributes.reset();
    EXPECT_THAT(timeline.forgottenViews, IsEmpty());
}

TEST_F(ActionDestructionTest, WithoutAKeyNothingGoes) {
    StartWatching();
    Make<CFUADeleteKey>(nullptr, nullptr).reset();
    Make<CFUACloneKey>(nullptr, nullptr).reset();
    EXPECT_THAT(factory.log, IsEmpty());
    EXPECT_THAT(timeline.forgottenViews, IsEmpty());
}

TEST_F(ActionDestructionTest, SavedRecordGoesBeforeTheKeyAndTheChildren) {
    auto action = Make<CFUAChangeAttribs>(NewLoggingView(), nullptr);
    action->ownsKey = true;
    action->savedRecord = Films().keyFactory->CreateKey(KeyKind::Rotation);
    action->children.push_back(new LoggingAction(factory.log));
    StartWatching();
    action.reset();
    EXPECT_THAT(factory.log,
                ElementsAre("Destroy 11", "Destroy 10", "SetRecord null false", "view", "child"));
}

TEST_F(ActionDestructionTest, ARecordThatStandsInATrackStaysThere) {
    CTrackCtrl& row = MakeRow(KeyKind::Position, boxTrack);
    CTrackKey* view = PutKey(row, 2.0f);
    IFilmKey* record = view->record;
    auto change = Make<CFUAChangeAttribs>(nullptr, nullptr);
    change->savedRecord = record;
    change.reset();
    EXPECT_TRUE(IsListed(*boxTrack, record));
    Make<CFUADeleteKey>(view, &row).reset();
    EXPECT_TRUE(row.keys.empty());
    EXPECT_TRUE(IsListed(*boxTrack, record));
    EXPECT_THAT(factory.log, IsEmpty());
}

TEST_F(ActionDestructionTest, WithoutAFactoryTheRecordIsOnlyDropped) {
    CTrackKey* view = NewLoggingView();
    loose.push_back(view->record);
    auto action = Make<CFUADeleteKey>(view, nullptr);
    auto change = Make<CFUAChangeAttribs>(nullptr, nullptr);
    change->savedRecord = Films().keyFactory->CreateKey(KeyKind::Position);
    loose.push_back(change->savedRecord);
    StartWatching();
    Films().keyFactory = nullptr;
    action.reset();
    change.reset();
    Films().keyFactory = &factory;
    EXPECT_THAT(factory.log, ElementsAre("SetRecord null false", "view"));
}

TEST_F(ActionDestructionTest, WithoutAMainControlTheCurrentKeyIsStillLetGo) {
    auto action = Make<CFUADeleteKey>(NewView(KeyKind::Position, 2.0f), nullptr);
    CurrentKey() = action->key;
    window.hasControl = false;
    action.reset();
    window.hasControl = true;
    EXPECT_EQ(CurrentKey(), nullptr);
}
