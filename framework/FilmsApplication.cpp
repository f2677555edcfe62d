#include "framework/FilmsApplication.h"

#include "framework/private/DyingWindows.h"
#include "processor/UpperHalves.h"

#include <QFontDatabase>
#include <QPalette>

#include <clocale>
#include <cstdio>
#include <exception>

namespace {

QPalette LightPalette() {
    QPalette p(QColor(239, 240, 241));
    p.setColor(QPalette::Base, Qt::white);
    p.setColor(QPalette::AlternateBase, QColor(247, 248, 249));
    p.setColor(QPalette::Text, QColor(32, 34, 37));
    p.setColor(QPalette::WindowText, QColor(32, 34, 37));
    p.setColor(QPalette::ButtonText, QColor(32, 34, 37));
    p.setColor(QPalette::Highlight, QColor(48, 140, 198));
    p.setColor(QPalette::HighlightedText, Qt::white);
    p.setColor(QPalette::ToolTipBase, QColor(255, 255, 232));
    p.setColor(QPalette::ToolTipText, QColor(32, 34, 37));
    for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
        p.setColor(QPalette::Disabled, role, QColor(150, 153, 157));
    }
    return p;
}

} // namespace

FilmsApplication::FilmsApplication(int& argc, char** argv) : QApplication(argc, argv) {
    // The toolkit takes the user's locale; files and number fields need points, not commas.
    std::setlocale(LC_NUMERIC, "C");
    setStyle("Fusion");
    setPalette(LightPalette());
    QFont font;
    font.setFamilies({"Liberation Sans", "Noto Sans", "DejaVu Sans"});
    font.setPixelSize(12);
    setFont(font);
    processor::ClearUpperHalves();
}

FilmsApplication::~FilmsApplication() {
    sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

// Every handler of the program runs inside this call and most code of it after one, and the toolkit has
// painted a background before a paint event. So both ends are where its traces in the registers go.
bool FilmsApplication::notify(QObject* receiver, QEvent* event) {
    const dying_windows::Delivery delivery(receiver);
    processor::ClearUpperHalves();
    const bool handled = Deliver(receiver, event);
    processor::ClearUpperHalves();
    return handled;
}

bool FilmsApplication::Deliver(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::exception& error) {
        Report(error.what());
    } catch (...) {
        Report("unknown exception");
    }
    return true;
}

void FilmsApplication::SetExceptionReport(std::function<void(const std::string&)> report) {
    exceptionReport = std::move(report);
}

void FilmsApplication::Report(const std::string& what) {
    if (exceptionReport) {
        exceptionReport(what);
    } else {
        std::fprintf(stderr, "Unhandled error: %s\n", what.c_str());
    }
}
