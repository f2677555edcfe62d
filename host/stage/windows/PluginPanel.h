#pragma once

#include <QDockWidget>

namespace stage {

/// The side panel that plug-ins share. It shows one form at a time; hiding it in any way drops the form.
class PluginPanel : public QDockWidget {
    Q_OBJECT
public:
    explicit PluginPanel(QWidget* parent);

signals:
    /// The user closed the panel; the form is still there.
    void ClosedByUser();
    /// The user wants the panel, by the menu; it has no form yet.
    void OpenedByUser();

protected:
    void closeEvent(QCloseEvent* event) override;
};

} // namespace stage
