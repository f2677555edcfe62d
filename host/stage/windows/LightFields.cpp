#include "host/engine/Light.h"
#include "host/stage/host/DrivenLight.h"
#include "host/stage/windows/ColorButton.h"
#include "host/stage/windows/ObjectPanel.h"

#include <cmath>
#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QLabel>

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
      intensity(Number(this, 100.0, 0.1, QString())), range(Number(this, 100000.0, 50.0, tr(" cm"))),
      belongs(new QLabel(this)) {
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
    belongs->setObjectName("BelongsToFilm");
    belongs->setProperty("role", "hint");
    belongs->setTextFormat(Qt::PlainText);
    belongs->setWordWrap(true);
    belongs->hide();
    form->addRow(belongs);
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

void LightFields::ShowDriven(const DrivenLight& driven) {
    on->setEnabled(!driven.isDriven);
    color->setEnabled(!driven.color);
    belongs->setVisible(driven.isDriven);
    const QString film = QString::fromStdString(driven.film);
    belongs->setText(
        driven.color || driven.direction
            ? tr("The greyed fields belong to the film \"%1\": keys of its track set them.").arg(film)
            : tr("\"Shines\" belongs to the film \"%1\": flags keys of its track set it.").arg(film));
}

engine::LightProperties LightFields::Properties(const engine::LightProperties& present) const {
    engine::LightProperties light = present;
    if (on->isEnabledTo(this)) {
        light.on = on->isChecked();
    }
    if (color->isEnabledTo(this)) {
        light.color = {static_cast<float>(color->color.redF()), static_cast<float>(color->color.greenF()),
                       static_cast<float>(color->color.blueF())};
    }
    light.intensity = static_cast<float>(intensity->value());
    light.range = static_cast<float>(range->value());
    return light;
}

} // namespace stage
