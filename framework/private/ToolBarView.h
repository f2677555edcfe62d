#pragma once

#include "framework/QtBridge.h"
#include "framework/ToolBar.h"

#include <QPointer>
#include <QToolBar>

// Keeps a native tool bar equal to the data of a CToolBar. Owned by the native tool bar.
struct ToolBarView : QObject {
    ToolBarView(CToolBar& data, QToolBar& bar, CommandSink sink);
    ~ToolBarView() override;

    // After buttons changed.
    void Rebuild();
    // After states or the text changed.
    void Refresh();
    void Forget() { source = nullptr; }
    // Lets the owner word the tip of a button.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    CToolBar* source;
    QToolBar& native;
    CommandSink onCommand;
    std::vector<QAction*> actions;
};
