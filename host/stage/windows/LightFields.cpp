#include "host/engine/Light.h"
#include "host/stage/windows/ColorButton.h"
#include "host/stage/windows/ObjectPanel.h"

#include <cmath>
#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QFormLayout>

namespace stage {

namespace {
QDoubleSpinBox* Number(QWidget* parent, double most, double step, const QString& unit) {
    auto* field = new QDoubleSpinBox(parent);
    field->setRange(0.0, most);
    field->setSingleStep(step);
    field->setSuffix(unit);
    field->setKeyboardTracking(false);
    return field;
}
} // namespace

LightFields::LightFields(QWidget* parent, bool withRange)
    : QWidget(parent), on(new QCheckBox(tr("Shines"), this)), color(new ColorButton(this)),
      intensity(Number(this, 100.0, 0.1, QString())), range(Number(this, 100000.0, 50.0, tr(" cm"))) {
    auto* form = new QFormLayout(this);
    form->setContentsMargins(0, 0, 0, 0);
    form->addRow(QString(), on);
    form->addRow(tr("Colour"), color);
    form->addRow(tr("Strength"), intensity);
    form->addRow(tr("Range"), range);
    if (!withRange) {
        form->labelForField(range)->hide();
        range->hide();
    }
    connect(on, &QCheckBox::toggled, this, &LightFields::Tell);
    connect(color, &ColorButton::ColorChosen, this, &LightFields::Tell);
    connect(intensity, &QDoubleSpinBox::valueChanged, this, &LightFields::Tell);
    connect(range, &QDoubleSpinBox::valueChanged, this, &LightFields::Tell);
}

void LightFields::Tell() {
    if (!showing) {
        emit Changed();
    }
}

void LightFields::Show(const engine::LightProperties& light) {
    showing = true;
    const auto part = [](float share) { return std::lround(std::clamp(share, 0.0f, 1.0f) * 255.0f); };
    on->setChecked(light.on);
    color->SetColor(QColor(static_cast<int>(part(light.color.x)), static_cast<int>(part(light.color.y)),
                           static_cast<int>(part(light.color.z))));
    intensity->setValue(light.intensity);
    range->setValue(light.range);
    showing = false;
}

engine::LightProperties LightFields::Properties() const {
    engine::LightProperties light;
    light.on = on->isChecked();
    light.color = {static_cast<float>(color->color.redF()), static_cast<float>(color->color.greenF()),
                   static_cast<float>(color->color.blueF())};
    light.intensity = static_cast<float>(intensity->value());
    light.range = static_cast<float>(range->value());
    return light;
}

} // namespace stage
