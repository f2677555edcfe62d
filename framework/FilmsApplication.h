#pragma once

#include "framework/Export.h"

#include <QApplication>

#include <functional>
#include <string>

/// The application of a host, whose sources know the toolkit. It has a light, plain look, numbers in the C
/// locale, and keeps exceptions out of the event loop: each is reported and the loop goes on.
class FILMS_API FilmsApplication : public QApplication {
public:
    FilmsApplication(int& argc, char** argv);
    ~FilmsApplication() override;

    bool notify(QObject* receiver, QEvent* event) override;

    /// Replaces the report, which goes to the standard error stream.
    void SetExceptionReport(std::function<void(const std::string&)> report);

private:
    bool Deliver(QObject* receiver, QEvent* event);
    void Report(const std::string& what);

    std::function<void(const std::string&)> exceptionReport;
};
