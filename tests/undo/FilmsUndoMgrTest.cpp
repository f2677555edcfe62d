#include "undo/FilmsUndoMgr.h"

#include "tests/undo/UndoFixture.h"

#include <limits>
#include <typeindex>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

/// Writes its name down when it goes, and runs what it is given.
struct NamedAction final : CFilmsUndoAction {
    NamedAction(std::vector<std::string>& calls, std::string ownName)
        : log(calls), name(std::move(ownName)) {}
    ~NamedAction() override {
        log.push_back(name);
        if (onEnd) {
            onEnd();
        }
    }
    bool Undo() override {
        log.push_back("Undo");
        return true;
    }
    bool Redo() override {
        log.push_back("Redo");
        return true;
    }

    std::vector<std::string>& log;
    std::string name;
    std::function<void()> onEnd;
};

class FilmsUndoMgrTest : public UndoTest {
protected:
    NamedAction* New(const std::string& name) { return new NamedAction(gone, name); }
    void Fill(int count) {
        for (int i = 0; i < count; ++i) {
            manager.actions.push_back(New(std::to_string(i)));
        }
        manager.position = count - 1;
    }

    std::vector<std::string> gone;
    CFilmsUndoMgr manager{&timeline};
};

struct ActionOfCode {
    int code;
    std::type_index type;
    int typeField;
    bool ownsKey;
};

class CreateActionTest : public UndoTest, public ::testing::WithParamInterface<ActionOfCode> {};

} // namespace

TEST_P(CreateActionTest, MakesAnEmptyActionOfItsClass) {
    CFilmsUndoMgr manager(&timeline);
    const std::unique_ptr<CFilmsUndoAction> made(manager.CreateAction(GetParam().code));
    ASSERT_NE(made, nullptr);
    const CFilmsUndoAction& action = *made;
    EXPECT_EQ(std::type_index(typeid(action)), GetParam().type);
    EXPECT_EQ(action.type, GetParam().typeField);
    EXPECT_TRUE(action.children.empty());
    const auto& edit = dynamic_cast<const CFUAOneKey&>(action);
    EXPECT_EQ(edit.key, nullptr);
    EXPECT_EQ(edit.trackCtrl, nullptr);
    EXPECT_EQ(edit.ownsKey, GetParam().ownsKey);
    if (const auto* size = dynamic_cast<const CFUAChangeSize*>(made.get())) {
        EXPECT_EQ(size->start, -1.0f);
        EXPECT_EQ(size->end, -1.0f);
    }
    if (const auto* change = dynamic_cast<const CFUAChangeAttribs*>(made.get())) {
        EXPECT_EQ(change->savedRecord, nullptr);
    }
    EXPECT_TRUE(manager.actions.empty());
    EXPECT_THAT(manager.retired.Actions(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Codes, CreateActionTest,
                         ::testing::Values(ActionOfCode{0, typeid(CFUAAddKey), 0, false},
                                           ActionOfCode{1, typeid(CFUADeleteKey), 1, true},
                                           ActionOfCode{2, typeid(CFUAChangeSize), -1, false},
                                           ActionOfCode{3, typeid(CFUACloneKey), 3, true},
                                           ActionOfCode{4, typeid(CFUAChangeAttribs), 4, false}));

TEST_F(FilmsUndoMgrTest, OtherCodesMakeNothing) {
    for (const int code : {5, 6, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        EXPECT_EQ(manager.CreateAction(code), nullptr) << code;
    }
}

TEST_F(FilmsUndoMgrTest, StartsEmpty) {
    EXPECT_THAT(manager.actions, IsEmpty());
    EXPECT_EQ(manager.position, -1);
    EXPECT_EQ(manager.owner, &timeline);
}

TEST_F(FilmsUndoMgrTest, AddRecordsNothingAndDestroysNothing) {
    NamedAction* action = New("kept");
    EXPECT_FALSE(manager.Add(action));
    EXPECT_FALSE(manager.Add(nullptr));
    EXPECT_THAT(manager.actions, IsEmpty());
    EXPECT_EQ(manager.position, -1);
    EXPECT_THAT(gone, IsEmpty());
    EXPECT_THAT(manager.retired.Actions(), ElementsAre(action));
}

TEST_F(FilmsUndoMgrTest, UndoReachesNoAction) {
    manager.Add(New("added"));
    EXPECT_FALSE(manager.Undo());
    EXPECT_FALSE(manager.Undo());
    EXPECT_THAT(gone, IsEmpty());
    EXPECT_THAT(manager.actions, IsEmpty());
    EXPECT_EQ(manager.position, -1);
    Fill(1); // not even a recorded one
    EXPECT_FALSE(manager.Undo());
    EXPECT_EQ(manager.position, 0);
    EXPECT_THAT(gone, IsEmpty());
}

TEST_F(FilmsUndoMgrTest, TruncateCutsFromAnIndexOn) {
    Fill(4);
    CFilmsUndoAction* first = manager.actions[0];
    CFilmsUndoAction* second = manager.actions[1];
    manager.TruncateFrom(2);
    EXPECT_THAT(manager.actions, ElementsAre(first, second));
    EXPECT_THAT(gone, ElementsAre("2", "3"));
    EXPECT_EQ(manager.position, 3); // Clear alone resets it
}

TEST_F(FilmsUndoMgrTest, TruncateBeyondTheEndDoesNothing) {
    Fill(2);
    manager.TruncateFrom(2);
    manager.TruncateFrom(3);
    manager.TruncateFrom(std::numeric_limits<int>::max());
    EXPECT_THAT(manager.actions, SizeIs(2));
    EXPECT_THAT(gone, IsEmpty());
}

TEST_F(FilmsUndoMgrTest, TruncateFromANegativeIndexCutsAll) {
    Fill(2);
    manager.actions.push_back(nullptr);
    manager.TruncateFrom(std::numeric_limits<int>::min());
    EXPECT_THAT(manager.actions, IsEmpty());
    EXPECT_THAT(gone, ElementsAre("0", "1"));
    manager.TruncateFrom(-1);
    EXPECT_THAT(manager.actions, IsEmpty());
}

TEST_F(FilmsUndoMgrTest, ClearDestroysEverything) {
    Fill(2);
    manager.Add(New("added"));
    manager.Clear();
    EXPECT_THAT(gone, ElementsAre("0", "1", "added"));
    EXPECT_THAT(manager.actions, IsEmpty());
    EXPECT_THAT(manager.retired.Actions(), IsEmpty());
    EXPECT_EQ(manager.position, -1);
    manager.Clear();
    EXPECT_THAT(gone, SizeIs(3));
}

TEST_F(FilmsUndoMgrTest, ClearOfAnEmptyManagerOnlyResetsThePosition) {
    manager.position = 7;
    manager.Clear();
    EXPECT_EQ(manager.position, -1);
}

TEST_F(FilmsUndoMgrTest, DestructionClears) {
    auto* other = new CFilmsUndoMgr(nullptr);
    other->actions.push_back(New("recorded"));
    other->Add(New("added"));
    delete other;
    EXPECT_THAT(gone, ElementsAre("recorded", "added"));
    static_assert(std::has_virtual_destructor_v<CFilmsUndoMgr>);
    static_assert(std::has_virtual_destructor_v<CFilmsUndoAction>);
}

TEST_F(FilmsUndoMgrTest, AnActionThatGoesMayCallBack) {
    NamedAction* action = New("first");
    action->onEnd = [this] {
        manager.Clear();
        manager.Add(New("late"));
    };
    manager.Add(action);
    manager.Add(New("second"));
    manager.Clear();
    EXPECT_THAT(gone, ElementsAre("first", "second"));
    EXPECT_THAT(manager.retired.Actions(), SizeIs(1));
}
