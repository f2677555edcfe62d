// What the dialogs of filters and settings look like.
#include "files/FilterTracksDlg.h"
#include "files/KeysFilterDlg.h"
#include "files/MainCtrlSettingsDlg.h"
#include "framework/QtBridge.h"
#include "framework/Resource.h"
#include "plugin/base/PluginResources.h"
#include "tests/support/Golden.h"
#include "tests/timeline/CommandFixture.h"

#include <QAbstractScrollArea>
#include <QGroupBox>
#include <QImage>
#include <QWidget>

namespace {

class FilterDialogsPictureTest : public CommandTest {
protected:
    /// Texts differ with the fonts of a machine, and what the toolkit draws with its style.
    static std::vector<CRect> ToolkitAreas(const CDialog& dialog) {
        std::vector<CRect> areas;
        for (const QWidget* child :
             NativeWidget(dialog)->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
            const QRect r = child->geometry();
            if (qobject_cast<const QGroupBox*>(child) != nullptr) {
                areas.emplace_back(r.left(), r.top(), r.right() + 1, r.top() + 16); // its title
            } else if (qobject_cast<const QAbstractScrollArea*>(child) == nullptr) {
                areas.emplace_back(r.left(), r.top(), r.right() + 1, r.bottom() + 1);
            }
        }
        return areas;
    }
    /// The part of each line of a list from one of its pixels to another, but for the line's upper and lower
    /// edge.
    static void MaskLines(CDialog& dialog, const CListBox& list, int left, int right,
                          std::vector<CRect>& areas) {
        for (int line = 0; line < list.GetCount(); ++line) {
            CRect r;
            list.GetItemRect(line, &r);
            CRect area(r.left + left, r.top + 1, right < 0 ? r.right + right : r.left + right, r.bottom - 1);
            list.ClientToScreen(&area);
            dialog.ScreenToClient(&area);
            areas.push_back(area);
        }
    }
    void Compare(CDialog& dialog, const std::string& name,
                 const std::function<void(std::vector<CRect>&)>& prepare) {
        Hooks().modalDialog = [&](CDialog& shown) {
            std::vector<CRect> areas = ToolkitAreas(shown);
            prepare(areas);
            Settle();
            ExpectGolden(PictureOf(shown), "tests/timeline", name, areas);
            return IDCANCEL;
        };
        dialog.DoModal();
    }

    ResourceScope resources{PluginResources()};
};

} // namespace

TEST_F(FilterDialogsPictureTest, KeysFilter) {
    CKeysFilterDlg dialog(plugin);
    dialog.SetTrack(track);
    KeyKindParamsTable params = control->keyParams;
    params[KeyKind::Speech].visible = false;
    dialog.SetParams(params);
    Compare(dialog, "keys_filter", [&](std::vector<CRect>& areas) {
        dialog.list.SetCurSel(2);
        constexpr int kBoxes = 16; // pixels at the right that stay
        MaskLines(dialog, dialog.list, 1, -kBoxes, areas);
    });
}

TEST_F(FilterDialogsPictureTest, FilterTracks) {
    plugin.AddActors({editor.Create("Boat")});
    AddCamera(film, "Cam");
    control->ShowFilm(film, true);
    RowOf("Boat")->SetVisibleFlag(false);
    CFilterTracksDlg dialog(plugin);
    Compare(dialog, "filter_tracks", [&](std::vector<CRect>& areas) {
        constexpr int kTexts = 60; // pixels at the left
        MaskLines(dialog, dialog.list, 0, kTexts, areas);
    });
}

TEST_F(FilterDialogsPictureTest, Settings) {
    CMainCtrlSettingsDlg dialog;
    dialog.end = 10.0f;
    dialog.interval = 10.0f;
    Compare(dialog, "settings", [](std::vector<CRect>&) {});
}
