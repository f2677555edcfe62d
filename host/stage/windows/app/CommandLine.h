#pragma once

#include <QSize>
#include <QString>
#include <QStringList>

namespace stage {

/// What the program was asked to do.
struct CommandLine {
    QString level;
    QString film;
    bool play = false;
    QStringList screenshots; ///< files to write, main window first; the program ends afterwards
    QStringList plugins;     ///< libraries; without any, the ones beside the program
    bool noPlugins = false;
    QString dataFolder;   ///< empty: the user's own
    bool inspect = false; ///< tells scripts on request where everything is
    QSize size;           ///< of the main window; invalid: as last time
    bool help = false;
    QString error; ///< what is wrong with the arguments, empty if nothing
};

/// Reads the arguments behind the program's name. Nothing is looked up on the disk.
CommandLine ParseCommandLine(const QStringList& arguments);
/// What --help prints.
QString UsageText();

} // namespace stage
