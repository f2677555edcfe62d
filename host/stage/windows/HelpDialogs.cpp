#include "host/stage/windows/HelpDialogs.h"

#include "host/stage/windows/films/ScenarioKeys.h"
#include "host/stage/windows/MainWindow.h"

#include <algorithm>
#include <QAction>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMessageBox>
#include <QTableWidget>
#include <QTextBrowser>
#include <QVBoxLayout>
#include <utility>

namespace stage {

namespace {

struct FixedLine {
    const char* keys;
    const char* meaning;
};

constexpr FixedLine kViews[] = {
    {"Left click, drag", QT_TR_NOOP("Select an object, or all in a rectangle (Shift adds, Ctrl takes out)")},
    {"Double click, Alt+click", QT_TR_NOOP("Select one object of a group alone")},
    {"Alt + left, middle", QT_TR_NOOP("Orbit around the selection, or what the view looks at")},
    {"Shift + middle", QT_TR_NOOP("Pan")},
    {"Right drag", QT_TR_NOOP("Look around; W A S D Q E fly, Shift is faster")},
    {"Wheel", QT_TR_NOOP("Closer or farther")},
    {"Home", QT_TR_NOOP("Show the level whole")},
    {"1 to 9, Ctrl + Alt + 1 to 9", QT_TR_NOOP("Go to a bookmark of the view, make one")},
    {"Ctrl, Shift, V while dragging", QT_TR_NOOP("Snap to grid and angle, to surfaces, to vertices")},
    {"Escape", QT_TR_NOOP("Cancel a drag, or what Stage waits for")},
    {"Right click", QT_TR_NOOP("Menu of an object or of the view")},
};

/// What the plug-in itself gives a meaning in its window.
constexpr FixedLine kScenario[] = {
    {"Space", QT_TR_NOOP("Play from the cursor, stop")},
    {"Home, End", QT_TR_NOOP("Cursor to the start or the end of the key under the mouse")},
    {"F2", QT_TR_NOOP("Mark the selected key")},
    {"Wheel", QT_TR_NOOP("Scroll the rows")},
    {"Ctrl + wheel", QT_TR_NOOP("Zoom at the mouse")},
    {"Shift + wheel", QT_TR_NOOP("Scroll the time")},
    {"Ctrl + click", QT_TR_NOOP("Mark a key, to move several together")},
    {"Shift + drag", QT_TR_NOOP("Copy a key")},
    {"Alt + drag", QT_TR_NOOP("Move a key frame by frame")},
    {"Shift + click in the ruler", QT_TR_NOOP("Set a mark")},
    {"Double click on a key", QT_TR_NOOP("Its attributes")},
};

constexpr const char* kSteps[] = {
    "Open the sample level with File > Open: examples/harbour/harbour.level.",
    "Turn the view to where the film shall begin: drag with the middle button, come nearer with the "
    "wheel.",
    "Choose Films > New film, type a name, leave the tick at the camera and press OK. The Scenario window "
    "opens below.",
    "Click the name Camera 1 in the Scenario window. It becomes green: this camera is worked on.",
    "Press the ruler above the rows half way. The red cursor goes there.",
    "Turn the view to where the camera shall be by then, and press the button Create camera frame.",
    "Press the button Animate object. From now on what you move gets keys at the cursor.",
    "Click Fishing boat in the list Objects, choose the tool Move (W) and drag its arrows in the view.",
    "Right-click in the view beside all objects and choose Attach movie: the view looks through the camera.",
    "Press the first button of the Scenario window to go back to the start, then Ctrl+Enter. Your film "
    "plays.",
    "Save the level with File > Save as.",
};

QString Plain(const QString& text) {
    return QString(text).remove('&').remove("...");
}

QString PluginKeys(const ShortcutRecord& shortcut) {
    constexpr int kEnter = 13;
    constexpr std::pair<int, const char*> kModifiers[] = {{8, "Ctrl+"}, {16, "Alt+"}, {4, "Shift+"}};
    QString keys;
    for (const auto& [bit, name] : kModifiers) {
        keys += (shortcut.modifiers & bit) != 0 ? name : "";
    }
    return keys + (shortcut.keyCode == kEnter ? QString("Enter") : QString(QChar(shortcut.keyCode)));
}

} // namespace

std::vector<ShortcutLine> AllShortcuts(const MainWindow& window) {
    std::vector<ShortcutLine> lines;
    for (const QAction* action : window.findChildren<QAction*>()) {
        if (!action->shortcut().isEmpty() && !action->text().isEmpty()) {
            lines.push_back({MainWindow::tr("Stage"), action->shortcut().toString(QKeySequence::NativeText),
                             Plain(action->text())});
        }
    }
    std::ranges::sort(lines, {}, &ShortcutLine::meaning);
    for (const ShortcutRecord& shortcut : window.host.shortcuts) {
        lines.push_back(
            {MainWindow::tr("Films"), PluginKeys(shortcut), QString::fromStdString(shortcut.description)});
    }
    for (const FixedLine& line : kViews) {
        lines.push_back({MainWindow::tr("Views"), line.keys, MainWindow::tr(line.meaning)});
    }
    for (const FixedLine& line : kScenario) {
        lines.push_back({MainWindow::tr("Scenario"), line.keys, MainWindow::tr(line.meaning)});
    }
    for (const ScenarioKey& key : ScenarioKeyTable()) {
        lines.push_back({MainWindow::tr("Scenario"), key.keys, MainWindow::tr(key.meaning)});
    }
    return lines;
}

ShortcutsDialog::ShortcutsDialog(std::vector<ShortcutLine> allLines, QWidget* parent)
    : QDialog(parent), lines(std::move(allLines)), search(new QLineEdit(this)),
      table(new QTableWidget(this)) {
    setObjectName("Shortcuts");
    setWindowTitle(tr("Mouse and keys"));
    search->setObjectName("Search");
    search->setPlaceholderText(tr("Search keys and what they do"));
    search->setClearButtonEnabled(true);
    table->setColumnCount(3);
    table->setHorizontalHeaderLabels({tr("Where"), tr("Keys"), tr("What")});
    table->setRowCount(static_cast<int>(lines.size()));
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setShowGrid(false);
    table->setAlternatingRowColors(true);
    table->verticalHeader()->hide();
    for (int row = 0; row < table->rowCount(); ++row) {
        const ShortcutLine& line = lines[static_cast<std::size_t>(row)];
        table->setItem(row, 0, new QTableWidgetItem(line.where));
        table->setItem(row, 1, new QTableWidgetItem(line.keys));
        table->setItem(row, 2, new QTableWidgetItem(line.meaning));
    }
    table->resizeColumnsToContents();
    table->horizontalHeader()->setStretchLastSection(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(search, &QLineEdit::textChanged, this, &ShortcutsDialog::Filter);
    auto* column = new QVBoxLayout(this);
    column->addWidget(search);
    column->addWidget(table);
    column->addWidget(buttons);
    resize(640, 560);
}

int ShortcutsDialog::ShownCount() const {
    int shown = 0;
    for (int row = 0; row < table->rowCount(); ++row) {
        shown += table->isRowHidden(row) ? 0 : 1;
    }
    return shown;
}

void ShortcutsDialog::Filter(const QString& text) {
    const QStringList words = text.split(' ', Qt::SkipEmptyParts);
    for (int row = 0; row < table->rowCount(); ++row) {
        const ShortcutLine& line = lines[static_cast<std::size_t>(row)];
        const QString all = line.where + ' ' + line.keys + ' ' + line.meaning;
        const bool hasAll = std::ranges::all_of(
            words, [&all](const QString& word) { return all.contains(word, Qt::CaseInsensitive); });
        table->setRowHidden(row, !hasAll);
    }
}

std::span<const char* const> FirstFilmSteps() {
    return kSteps;
}

void ShowFirstFilm(QWidget* parent) {
    if (auto* open = parent->findChild<QDialog*>("FirstFilm")) {
        open->show();
        open->raise();
        open->activateWindow();
        return;
    }
    auto* dialog = new QDialog(parent);
    dialog->setObjectName("FirstFilm");
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(MainWindow::tr("Your first film in ten minutes"));
    auto* page = new QTextBrowser(dialog);
    QString text = "<ol>";
    for (const char* step : FirstFilmSteps()) {
        text += QString("<li style='margin-bottom: 8px'>%1</li>").arg(QString(step).toHtmlEscaped());
    }
    page->setHtml(text + "</ol>");
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, dialog);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::close);
    auto* column = new QVBoxLayout(dialog);
    column->addWidget(page);
    column->addWidget(buttons);
    dialog->resize(420, 520);
    dialog->show();
}

void ShowAbout(QWidget* parent) {
    QMessageBox box(
        QMessageBox::NoIcon, MainWindow::tr("About Stage"),
        MainWindow::tr("<h3>Stage</h3><p>An editor for levels, and for the films that play in them.</p>"
                       "<p>Qt %1</p>")
            .arg(qVersion()),
        QMessageBox::Close, parent);
    box.exec();
}

} // namespace stage
