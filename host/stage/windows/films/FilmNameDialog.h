#pragma once

#include <QDialog>
#include <QStringList>

class QCheckBox;
class QDialogButtonBox;
class QDoubleSpinBox;
class QLabel;
class QLineEdit;

namespace stage {

/// Asks for the name of a film, which no other film may have. For a new one it asks for the length and
/// offers a camera too.
class FilmNameDialog : public QDialog {
    Q_OBJECT
public:
    static constexpr double kNewLength = 10.0; ///< seconds, as the plug-in makes a film

    /// `taken` are the names of the other films.
    FilmNameDialog(const QString& title, const QString& proposal, QStringList taken, bool isNew,
                   QWidget* parent);

    QString Name() const;
    double Seconds() const;
    bool WantsCamera() const;

private:
    void Check();

    QStringList others;
    QLineEdit* name;
    QLabel* fault;
    QDoubleSpinBox* length;
    QCheckBox* camera;
    QDialogButtonBox* buttons;
};

} // namespace stage
