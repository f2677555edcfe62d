#pragma once

#include <QDialog>
#include <QString>
#include <span>
#include <vector>

class QLineEdit;
class QTableWidget;

namespace stage {

class MainWindow;

/// A key or a mouse gesture, as it is told to the user.
struct ShortcutLine {
    QString where;
    QString keys;
    QString meaning;
};

/// All of Stage's, of its views, of the plug-ins and of the window "Scenario".
std::vector<ShortcutLine> AllShortcuts(const MainWindow& window);

/// Lists shortcuts; what is typed narrows the list to lines that have all of the words.
class ShortcutsDialog : public QDialog {
    Q_OBJECT
public:
    ShortcutsDialog(std::vector<ShortcutLine> allLines, QWidget* parent);

    /// Of the lines that are shown.
    int ShownCount() const;

private:
    void Filter(const QString& text);

    std::vector<ShortcutLine> lines;
    QLineEdit* search;
    QTableWidget* table;
};

/// What a first film takes, step by step, as the user guide has it.
std::span<const char* const> FirstFilmSteps();

/// The steps in a window that stays open beside the work, one of a parent. Deletes itself when it is closed.
void ShowFirstFilm(QWidget* parent);
void ShowAbout(QWidget* parent);

} // namespace stage
