#include "host/stage/windows/LightFields.h"

#include "host/engine/Light.h"
#include "host/stage/windows/ColorButton.h"
#include "host/stage/windows/EntryField.h"

#include <algorithm>
#include <cmath>
#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>

namespace stage {

namespace {
EntryField* Number(QWidget* parent, NumberKind kind, double most, double step, const QString& unit) {
    auto* field = new EntryField(parent, kind);
    field->setRange(0.0, most);
    field->setSingleStep(step);
    field->setSuffix(unit);
    return field;
}

using engine::LightProperties;

bool Agree(const std::vector<LightProperties>& lights,
           bool (*same)(const LightProperties&, const LightProperties&)) {
    return std::ranges::all_of(lights,
                               [&](const LightProperties& light) { return same(light, lights.front()); });
}
} // namespace

LightFields::LightFields(QWidget* parent, bool withRange)
    : QWidget(parent), on(new QCheckBox(tr("Shines"), this)), color(new ColorButton(this)),
      intensity(Number(this, NumberKind::Plain, 100.0, 0.1, QString())),
      range(Number(this, NumberKind::Length, 100000.0, 50.0, tr(" cm"))), belongs(new QLabel(this)) {
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
    connect(on, &QCheckBox::stateChanged, this, [this] {
        if (!showing) {
            on->setTristate(false); // the user says one or the other
            Tell();
        }
    });
    connect(color, &ColorButton::ColorChosen, this, [this] {
        colorsDiffer = false;
        Tell();
    });
    connect(intensity, &EntryField::Entered, this, &LightFields::Tell);
    connect(range, &EntryField::Entered, this, &LightFields::Tell);
}

void LightFields::Tell() {
    if (!showing) {
        emit Changed();
    }
}

void LightFields::Show(const std::vector<LightProperties>& lights) {
    const LightProperties& light = lights.front();
    showing = true;
    const auto part = [](float share) { return std::lround(std::clamp(share, 0.0f, 1.0f) * 255.0f); };
    if (Agree(lights, [](const LightProperties& a, const LightProperties& b) { return a.on == b.on; })) {
        on->setTristate(false);
        on->setChecked(light.on);
    } else {
        on->setCheckState(Qt::PartiallyChecked);
    }
    colorsDiffer =
        !Agree(lights, [](const LightProperties& a, const LightProperties& b) { return a.color == b.color; });
    color->SetColor(QColor(static_cast<int>(part(light.color.x)), static_cast<int>(part(light.color.y)),
                           static_cast<int>(part(light.color.z))));
    const bool sameStrength = Agree(lights, [](const LightProperties& a, const LightProperties& b) {
        return a.intensity == b.intensity;
    });
    sameStrength ? intensity->Show(light.intensity) : intensity->ShowMixed();
    const bool sameRange =
        Agree(lights, [](const LightProperties& a, const LightProperties& b) { return a.range == b.range; });
    sameRange ? range->Show(light.range) : range->ShowMixed();
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
    if (on->isEnabledTo(this) && on->checkState() != Qt::PartiallyChecked) {
        light.on = on->isChecked();
    }
    if (color->isEnabledTo(this) && !colorsDiffer) {
        light.color = {static_cast<float>(color->color.redF()), static_cast<float>(color->color.greenF()),
                       static_cast<float>(color->color.blueF())};
    }
    light.intensity = intensity->IsMixed() ? present.intensity : static_cast<float>(intensity->value());
    light.range = range->IsMixed() ? present.range : static_cast<float>(range->value());
    return light;
}

} // namespace stage
