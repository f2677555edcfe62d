#pragma once

#include <functional>
#include <QObject>

class QSocketNotifier;

namespace stage {

/// What happens when somebody ends the program from outside: SIGTERM, SIGHUP and SIGINT. `last` runs in the
/// event loop, then the signal takes its usual course. A second signal of the kind ends the program at once.
/// One object at a time.
class EndSignals : public QObject {
    Q_OBJECT
public:
    explicit EndSignals(std::function<void()> last);
    ~EndSignals() override;

private:
    void OnSignal();

    std::function<void()> run;
    QSocketNotifier* notifier = nullptr;
    int pipe[2] = {-1, -1}; ///< read end, write end
};

} // namespace stage
