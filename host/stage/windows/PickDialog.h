#pragma once

#include <optional>
#include <QDialog>
#include <QStringList>

class QLineEdit;
class QListWidget;
class QPushButton;

namespace stage {

/// What a pick dialog offers.
struct PickList {
    QString title;
    QString hint;      ///< a line under the title, as the object's name
    QStringList names; ///< in the order of the list
    QString present;
    bool freeText = false; ///< names outside the list are taken too
};

/// Picks one name of a list, with a search field.
class PickDialog : public QDialog {
    Q_OBJECT
public:
    PickDialog(const PickList& pickList, QWidget* parent);

    /// The name chosen; nothing on cancel.
    static std::optional<QString> Pick(const PickList& pickList, QWidget* parent);
    QString Chosen() const;

    QLineEdit* search;
    QListWidget* list;

private:
    void Filter(const QString& text);
    void UpdateButtons();

    QPushButton* ok = nullptr;
    bool freeText;
};

} // namespace stage
