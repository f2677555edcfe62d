#pragma once

#include "host/stage/host/DrivenLight.h"
#include "host/stage/windows/EntryField.h"

#include <QWidget>
#include <vector>

class QCheckBox;
class QLabel;

namespace engine {
struct LightProperties;
}

namespace stage {

class ColorButton;

/// Colour, strength and range of a light, or of several.
class LightFields : public QWidget {
    Q_OBJECT
public:
    explicit LightFields(QWidget* parent, bool withRange);

    /// What differs is shown as mixed; the list has one light at least.
    void Show(const std::vector<engine::LightProperties>& lights);
    /// The fields that the open film sets are grey, and a line says whose they are.
    void ShowDriven(const DrivenLight& driven);
    /// What is grey or mixed comes from the light as it shines now.
    engine::LightProperties Properties(const engine::LightProperties& present) const;

    QCheckBox* on;
    ColorButton* color;
    EntryField* intensity;
    EntryField* range;
    QLabel* belongs; ///< shown while a film drives the light

signals:
    /// By the user.
    void Changed();

private:
    void Tell();
    bool showing = false;
    bool colorsDiffer = false;
};

} // namespace stage
