#include "host/stage/windows/app/CommandLine.h"

#include <QRegularExpression>

namespace stage {

namespace {

QSize ParseSize(const QString& text) {
    static const QRegularExpression pattern("^(\\d{2,5})x(\\d{2,5})$");
    const QRegularExpressionMatch match = pattern.match(text);
    return match.hasMatch() ? QSize(match.captured(1).toInt(), match.captured(2).toInt()) : QSize();
}

bool IsOption(const QString& text) {
    return text.startsWith("--");
}

/// Walks over the arguments and fills the record.
class Parser {
public:
    explicit Parser(const QStringList& list) : arguments(list) {}

    CommandLine Parse() {
        while (next < arguments.size() && result.error.isEmpty()) {
            Take(arguments[next++]);
        }
        if (result.error.isEmpty() && result.play && result.film.isEmpty()) {
            result.error = "--play needs --film NAME";
        }
        if (result.error.isEmpty() && !result.film.isEmpty() && result.level.isEmpty()) {
            result.error = "--film needs a level";
        }
        return result;
    }

private:
    QString Value(const QString& option) {
        if (next >= arguments.size() || IsOption(arguments[next])) {
            result.error = option + " needs a value";
            return {};
        }
        return arguments[next++];
    }

    void Take(const QString& argument) {
        if (argument == "--film") {
            result.film = Value(argument);
        } else if (argument == "--play") {
            result.play = true;
        } else if (argument == "--screenshot") {
            result.screenshots << Value(argument);
            while (next < arguments.size() && arguments[next].endsWith(".png")) {
                result.screenshots << arguments[next++];
            }
        } else if (argument == "--inspect") {
            result.inspect = true;
        } else if (argument == "--plugin") {
            result.plugins << Value(argument);
        } else if (argument == "--no-plugins") {
            result.noPlugins = true;
        } else if (argument == "--data") {
            result.dataFolder = Value(argument);
        } else if (argument == "--size") {
            TakeSize(Value(argument));
        } else if (argument == "--help" || argument == "-h") {
            result.help = true;
        } else if (argument.startsWith('-')) {
            result.error = "unknown option " + argument;
        } else if (!result.level.isEmpty()) {
            result.error = "more than one level: " + argument;
        } else {
            result.level = argument;
        }
    }

    void TakeSize(const QString& text) {
        result.size = ParseSize(text);
        if (result.error.isEmpty() && !result.size.isValid()) {
            result.error = "--size needs WIDTHxHEIGHT, as 1280x720";
        }
    }

    const QStringList& arguments;
    qsizetype next = 0;
    CommandLine result;
};

} // namespace

CommandLine ParseCommandLine(const QStringList& arguments) {
    return Parser(arguments).Parse();
}

QString UsageText() {
    return "Usage: stage [LEVEL] [--film NAME [--play]] [options]\n"
           "       stage --render LEVEL --film NAME --out FOLDER ...   (stage --render --help)\n"
           "\n"
           "  --film NAME          open this film of the level\n"
           "  --play               play it\n"
           "  --screenshot FILE... write pictures of the windows, the main window first, and quit\n"
           "  --size WxH           size of the main window\n"
           "  --plugin LIBRARY     load this plug-in instead of the ones beside the program\n"
           "  --no-plugins         load none\n"
           "  --data FOLDER        where the editor's own files are\n"
           "  --inspect            answer each line of input with what the windows show, as JSON\n"
           "  --help               show this text\n";
}

} // namespace stage
