// What the plug-in's dialogs hold, as their resources say it: numbers and words.
#include "framework/Dialog.h"
#include "framework/QtBridge.h"
#include "framework/Resource.h"
#include "framework/TestHooks.h"
#include "plugin/base/PluginResources.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QAbstractButton>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QWidget>
#include <string>
#include <utility>
#include <vector>

using ::testing::UnorderedElementsAreArray;

namespace {

struct DialogCase {
    const char* name;
    UINT id;
    std::string caption;
    std::vector<std::pair<int, std::string>> buttons; ///< of all sorts
    std::vector<int> fields;
    std::vector<int> lists;
    std::vector<int> statics;       ///< whose text the dialog sets
    std::vector<std::string> words; ///< labels and boxes without a number
};

std::string NameOf(const ::testing::TestParamInfo<DialogCase>& info) {
    return info.param.name;
}

class DialogResourcesTest : public ::testing::TestWithParam<DialogCase> {
protected:
    DialogResourcesTest() {
        Hooks().modalDialog = [this](CDialog& shown) {
            Look(shown);
            wasShown = true;
            return IDCANCEL;
        };
    }
    static QWidget* Item(const CDialog& dialog, int id) {
        CWnd* item = dialog.GetDlgItem(id);
        return item != nullptr ? NativeWidget(*item) : nullptr;
    }
    static std::vector<std::string> WordsOf(const CDialog& dialog) {
        std::vector<std::string> words;
        const QWidget* window = NativeWidget(dialog);
        for (const QLabel* label : window->findChildren<QLabel*>()) {
            words.push_back(label->text().toStdString());
        }
        for (const QGroupBox* box : window->findChildren<QGroupBox*>()) {
            words.push_back(box->title().toStdString());
        }
        return words;
    }
    static void Look(const CDialog& dialog) {
        const DialogCase& wanted = GetParam();
        EXPECT_EQ(dialog.GetWindowText(), wanted.caption);
        EXPECT_EQ(NativeWidget(dialog)->findChildren<QAbstractButton*>().size(), wanted.buttons.size());
        for (const auto& [id, text] : wanted.buttons) {
            EXPECT_NE(qobject_cast<QAbstractButton*>(Item(dialog, id)), nullptr) << id;
            EXPECT_EQ(dialog.GetDlgItemText(id), text) << id;
        }
        EXPECT_EQ(NativeWidget(dialog)->findChildren<QLineEdit*>().size(), wanted.fields.size());
        for (const int id : wanted.fields) {
            EXPECT_NE(qobject_cast<QLineEdit*>(Item(dialog, id)), nullptr) << id;
        }
        for (const int id : wanted.lists) {
            EXPECT_NE(Item(dialog, id), nullptr) << id;
        }
        std::vector<std::string> words = wanted.words;
        for (const int id : wanted.statics) {
            EXPECT_NE(qobject_cast<QLabel*>(Item(dialog, id)), nullptr) << id;
            words.emplace_back();
        }
        EXPECT_THAT(WordsOf(dialog), UnorderedElementsAreArray(words));
    }

    HookScope hooks;
    ResourceScope resources{PluginResources()};
    bool wasShown = false;
};

} // namespace

TEST_P(DialogResourcesTest, HoldsItsControls) {
    CDialog dialog(GetParam().id);
    dialog.DoModal();
    EXPECT_TRUE(wasShown);
}

INSTANTIATE_TEST_SUITE_P(
    Dialogs, DialogResourcesTest,
    ::testing::Values(
        DialogCase{
            "KeyAttributes", 1746, "Key attributes", {{1808, "Next"}, {1809, "Prev"}}, {}, {1745}, {}, {}},
        DialogCase{"Settings",
                   1749,
                   "Settings",
                   {{1, "OK"}, {2, "Cancel"}},
                   {1758, 1759, 1760, 1772, 1773, 1774},
                   {},
                   {},
                   {"Time axis", "Movie length [s]", "Begin :", "End :", "Control draw range",
                    "Time interval length [s] :", "Grid", "Tics distance [frames] :",
                    "Big tics distance (in small tics) :", "Time labels distance (in big tics) :"}},
        DialogCase{"KeysFilter",
                   1750,
                   "Keys filter & settings",
                   {{1, "OK"},
                    {2, "Cancel"},
                    {1762, "Defaults"},
                    {1770, "Export"},
                    {1771, "Import"},
                    {1776, "Apply to all tracks"}},
                   {},
                   {1756},
                   {},
                   {"Keys :"}},
        DialogCase{"FilterTracks",
                   1751,
                   "Filter tracks",
                   {{1, "OK"}, {2, "Cancel"}, {1764, "All"}, {1765, "Inverse"}, {1766, "None"}},
                   {},
                   {1763},
                   {},
                   {"Object tracks:"}},
        DialogCase{"ChooseCamera", 1760, "Choose camera", {{1, "OK"}, {2, "Cancel"}}, {}, {1782}, {}, {}},
        DialogCase{
            "CameraParameters",
            1761,
            "Camera parameters",
            {{1, "OK"},
             {2, "Cancel"},
             {1786, "no loop"},
             {1787, "loop"},
             {1801, "smooth loop"},
             {1788, "ping pong loop"}},
            {1783, 1784, 1785, 1802},
            {},
            {},
            {"Name :", "Clipping planes", "Near :", "Far :", "Loop all tracks", "All tracks length :"}},
        DialogCase{"TrackParameters",
                   1762,
                   "Track parameters",
                   {{1, "OK"},
                    {2, "Cancel"},
                    {1804, "no loop"},
                    {1805, "loop"},
                    {1806, "smooth loop"},
                    {1807, "ping pong loop"}},
                   {1803},
                   {},
                   {},
                   {"Loop mode", "Length :"}},
        DialogCase{"Empty", 1763, "", {}, {}, {}, {}, {}},
        DialogCase{"AddCamera", 1768, "Add camera", {{1, "OK"}, {2, "Cancel"}}, {1783}, {}, {}, {"Name :"}},
        DialogCase{
            "MovieFrame", 1769, "Set movie frame", {{1, "OK"}, {2, "Cancel"}}, {1811}, {}, {}, {"Frame :"}},
        DialogCase{"FxName", 1770, "Get FX name", {{1, "OK"}, {2, "Cancel"}}, {}, {1812}, {}, {}},
        DialogCase{"AttachObject",
                   1771,
                   "Attach movie object",
                   {{1, "OK"}, {2, "Cancel"}, {1815, "..."}, {1816, "X"}},
                   {},
                   {},
                   {1813, 1814},
                   {"Parent", "Object :", "Mesh element :"}},
        DialogCase{"AdjustTime",
                   1772,
                   "Adjust time",
                   {{1819, "Insert"}, {2, "Close"}, {1822, "End"}},
                   {1818, 1820, 1821},
                   {},
                   {1823},
                   {"Current time:", "Insert/Delete", "Lenght:", "Static", "From:", "To:"}}),
    NameOf);

TEST(StringResourcesTest, WordsOfTheBoxes) {
    const ResourceScope resources{PluginResources()};
    EXPECT_EQ(LoadString(36843), "Frame is not in film range, insert proper value.");
    EXPECT_EQ(LoadString(36844), "Cannot find film.");
    EXPECT_EQ(LoadString(36845), "Cannot find film.");
    EXPECT_EQ(LoadString(36846), "Create camera frame");
}
