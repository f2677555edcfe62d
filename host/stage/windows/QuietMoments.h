#pragma once

#include <QObject>
#include <QTimer>

namespace stage {

class EditorHost;

/// Says when the user pauses: some time after the last press, key or turn of the wheel, with no button held,
/// no menu or box open and no film playing. For what takes a moment and can wait.
class QuietMoments : public QObject {
    Q_OBJECT
public:
    static constexpr int kPauseMs = 300; ///< longer than between the clicks of a double click

    QuietMoments(EditorHost& editorHost, QObject* parent);

    /// A moment is wanted though there was no input.
    void Request();
    bool IsQuiet() const;

signals:
    /// Once for each pause after input or a request.
    void Quiet();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void OnPause();

    EditorHost& host;
    QTimer pause;
};

} // namespace stage
