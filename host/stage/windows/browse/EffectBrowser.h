#pragma once

#include "host/stage/effects/EffectLibrary.h"
#include "host/stage/windows/browse/BrowserFrame.h"

#include <optional>
#include <string>

class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;

namespace stage {

class EffectPicture;

/// Chooses an effect of a kind by name: a list with a search field on the left, the effect running on the
/// right. Enter and a double click take, Escape leaves everything alone. A name that no file has is taken
/// too: the last row offers what is typed.
class EffectBrowser : public BrowserFrame {
    Q_OBJECT
public:
    /// `kindCode` as plug-ins give it; a code that means no kind has an empty list.
    EffectBrowser(EffectLibrary effects, int kindCode, const std::string& present, QWidget* parent);
    ~EffectBrowser() override;

    /// The name chosen; nothing on cancel, or if the window went meanwhile.
    static std::optional<std::string> Pick(EffectLibrary effects, int kindCode, const std::string& present,
                                           QWidget* parent);
    /// The name in the current row, empty without one.
    std::string Chosen() const;

    QLineEdit* search;
    QListWidget* list;
    EffectPicture* picture;
    QLabel* about;

private:
    QWidget* MakeListSide();
    QWidget* MakePictureSide();
    void FillList();
    void Filter(const QString& text);
    void OfferName(const QString& name);
    QListWidgetItem* BestRow(const QString& text) const;
    void ShowCurrent();

    const EffectLibrary library;
    EffectKind kind = EffectKind::Sequence;
    bool hasKind;
    const QString presentName;
    const std::string presentBytes;
    QListWidgetItem* offered = nullptr; ///< the last row, with a name that no file has
};

} // namespace stage
