#pragma once

#include <QDialog>
#include <QStringList>

class QCheckBox;
class QDialogButtonBox;
class QLabel;
class QLineEdit;

namespace stage {

/// Asks for the name of a film, which no other film may have. For a new one it offers a camera too.
class FilmNameDialog : public QDialog {
    Q_OBJECT
public:
    /// `taken` are the names of the other films.
    FilmNameDialog(const QString& title, const QString& proposal, QStringList taken, bool offersCamera,
                   QWidget* parent);

    QString Name() const;
    bool WantsCamera() const;

private:
    void Check();

    QStringList others;
    QLineEdit* name;
    QLabel* fault;
    QCheckBox* camera;
    QDialogButtonBox* buttons;
};

} // namespace stage
