#pragma once

#include <cstddef>
#include <QObject>

namespace stage {

class MainWindow;
class Notice;

/// Tells where deleted objects were in use, and offers to take the deletion back, until something else is
/// done.
class DeleteNotice : public QObject {
    Q_OBJECT
public:
    DeleteNotice(MainWindow& mainWindow, Notice& statusNotice);

private:
    void Show(const QString& uses);
    void OnSteps();

    MainWindow& window;
    Notice& notice;
    std::size_t before = 0; ///< steps done in front of the deletion
    bool isShown = false;
    bool isNoted = false; ///< the deletion is a step
};

} // namespace stage
