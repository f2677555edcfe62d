#include "plugin/parts/CommandBar.h"

#include "files/base/ToolBarReg.h"
#include "framework/Resource.h"
#include "plugin/base/PluginResources.h"
#include "plugin/parts/CommandTable.h"
#include "plugin/session/FilmSession.h"
#include "resources/resource.h"

void CommandBar::Load() {
    const ResourceScope resources(PluginResources());
    session.editor->AddPluginToolbar(&bar, IDR_FILMS_TOOLBAR);
    for (int index = 0; index < bar.GetButtonCount(); ++index) {
        UINT id = 0;
        UINT style = 0;
        int image = 0;
        bar.GetButtonInfo(index, id, style, image);
        bar.SetButtonInfo(index, CommandIdFromResource(id, session.pluginId), style, image);
    }
    bar.SetWindowText("Films");
}

void CommandBar::SetCheck(std::uint32_t localCommand, bool checked) {
    const std::uint32_t command = session.pluginId.WithLocal(localCommand).word;
    bar.SendMessage(TB_PRESSBUTTON, command, checked ? 1 : 0);
    bar.SendMessage(TB_CHECKBUTTON, command, checked ? 1 : 0);
}

void CommandBar::EnableRange(std::uint32_t first, std::uint32_t last, bool enabled) {
    for (std::uint32_t local = first; local <= last; ++local) {
        const std::uint32_t command = session.pluginId.WithLocal(local).word;
        bar.SendMessage(TB_ENABLEBUTTON, command, enabled ? 1 : 0);
        bar.SendMessage(TB_INDETERMINATE, command, enabled ? 0 : 1);
    }
}
