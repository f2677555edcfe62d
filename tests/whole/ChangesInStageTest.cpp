#include "framework/Wnd.h"
#include "host/stage/windows/ToolWindows.h"
#include "tests/whole/CameraStageFixture.h"

/// What counts as a change with the film plug-in at work: what a save would write, and not the looking.
class ChangesInStageTest : public CameraInStageTest {
protected:
    static constexpr UINT kFrameForward = 36841;

    void SetUp() override {} // the tests look by themselves
    void Send(UINT id) { window->toolWindows->Docks().front()->Window()->SendMessage(WM_COMMAND, id); }
    void Scrub(int frames) {
        for (int i = 0; i < frames; ++i) {
            Send(kFrameForward);
        }
        Settle();
    }
    bool IsChanged() const { return window->session.IsChanged(); }
    PluginCommandId Command(unsigned local) const {
        const unsigned number = window->host.plugins.Entries().front()->number;
        return PluginCommandId{PluginCommandId::FromPluginNumber(number).WithLocal(local).word};
    }
    void Run(unsigned local) {
        window->host.RunCommand(Command(local));
        Settle();
    }
};

TEST_F(ChangesInStageTest, LookingAtFilmsIsNoChange) {
    constexpr unsigned kAttachMovie = 60;
    EXPECT_FALSE(IsChanged()) << "opened";
    ChooseFilm("Epilogue");
    EXPECT_FALSE(IsChanged()) << "shown in the views";
    OpenScenario("Intro");
    EXPECT_FALSE(IsChanged()) << "shown in the scenario window";
    Scrub(40);
    EXPECT_FALSE(IsChanged()) << "scrubbed";
    CameraInStageTest::SetUp();
    EXPECT_FALSE(IsChanged()) << "a camera is on show";
    Run(kAttachMovie);
    Scrub(5);
    EXPECT_FALSE(IsChanged()) << "the view follows the film";
    PlayWithShortcut(500);
    EXPECT_FALSE(IsChanged()) << "played";
    ChooseFilm("Epilogue");
    ChooseFilm("<none>");
    EXPECT_FALSE(IsChanged()) << "left";
    EXPECT_FALSE(window->isWindowModified());
}

TEST_F(ChangesInStageTest, ASaveInTheMiddleOfAFilmLeavesNoChange) {
    OpenScenario("Intro");
    Scrub(40);
    ASSERT_TRUE(window->SaveLevelAs(QString::fromStdString(levelPath)));
    Settle();
    EXPECT_EQ(Films().currentFilm, Film("Intro"));
    EXPECT_FALSE(IsChanged());
}

TEST_F(ChangesInStageTest, TheFileDoesNotDependOnWhereTheCursorStands) {
    OpenScenario("Intro");
    ASSERT_TRUE(window->SaveLevelAs(QString::fromStdString(levelPath)));
    const std::string atStart = ReadWholeFile(levelPath);
    Scrub(55);
    ASSERT_TRUE(window->SaveLevelAs(QString::fromStdString(levelPath)));
    EXPECT_TRUE(ReadWholeFile(levelPath) == atStart);
    ChooseFilm("<none>");
    ASSERT_TRUE(window->SaveLevelAs(QString::fromStdString(levelPath)));
    EXPECT_TRUE(ReadWholeFile(levelPath) == atStart);
}

TEST_F(ChangesInStageTest, AsTheWorkIsKeptSoASaveWritesIt) {
    OpenScenario("Intro");
    Scrub(40);
    Run(60);
    const std::string kept = window->session.TakeWork().bytes;
    ASSERT_TRUE(window->SaveLevelAs(QString::fromStdString(levelPath)));
    EXPECT_TRUE(ReadWholeFile(levelPath) == kept);
}

TEST_F(ChangesInStageTest, AskingLeavesTheFilmOpenAndWhereItStands) {
    OpenScenario("Intro");
    Scrub(40);
    const std::vector<float> sailor = MatrixOf(*Object("Sailor"));
    IsChanged();
    window->session.TakeWork();
    EXPECT_EQ(Films().currentFilm, Film("Intro"));
    EXPECT_EQ(MatrixOf(*Object("Sailor")), sailor);
}

TEST_F(ChangesInStageTest, AVirtualObjectIsAChangeAndBackAgainNone) {
    constexpr unsigned kToVirtual = 52;
    constexpr unsigned kToNormal = 53;
    engine::SceneObject* crate =
        window->commands.Create({ClassName::Mesh, "Crate", "models/crate.glb", {}, nullptr, true});
    ASSERT_TRUE(window->SaveLevelAs(QString::fromStdString(levelPath)));
    Hooks().messageBox = [](const std::string&, UINT) { return IDYES; };
    window->host.Select({crate});
    Run(kToVirtual);
    ASSERT_EQ(crate->Info().className, ClassName::VirtualObject);
    EXPECT_TRUE(IsChanged());
    Run(kToNormal);
    EXPECT_FALSE(IsChanged());
}

TEST_F(ChangesInStageTest, AFoldIsAChangeAndBackAgainNone) {
    CameraInStageTest::SetUp();
    EXPECT_FALSE(IsChanged());
    CWnd* row = CameraRow();
    ASSERT_NE(row, nullptr);
    CWnd* button = row->GetWindowChild(0);
    ASSERT_NE(button, nullptr);
    const auto press = [&] {
        row->SendMessage(WM_COMMAND, MAKEWPARAM(button->GetDlgCtrlID(), BN_CLICKED),
                         reinterpret_cast<LPARAM>(button->GetSafeHwnd()));
        Settle();
    };
    press();
    EXPECT_TRUE(IsChanged());
    press();
    EXPECT_FALSE(IsChanged());
}
