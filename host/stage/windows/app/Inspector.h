#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QObject>

class QSocketNotifier;

namespace stage {

class MainWindow;

/// Where everything stands in the windows and in the level, for scripts that drive the program from outside
/// with real input: names, texts and rects in screen coordinates of what is visible.
QJsonObject DescribeStage(MainWindow& window);

/// Answers each line of the standard input with the description as one line of JSON on the standard output,
/// also while a film plays.
class Inspector : public QObject {
    Q_OBJECT
public:
    explicit Inspector(MainWindow& mainWindow);

private:
    void Read();

    MainWindow& window;
    QSocketNotifier* notifier;
};

} // namespace stage
