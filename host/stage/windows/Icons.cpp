#include "host/stage/windows/Icons.h"

#include "host/stage/windows/Theme.h"

#include <cmath>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>

namespace stage {

namespace {

// All pictures are drawn on a field of 16 by 16.
using Draw = void (*)(QPainter&);

void Line(QPainter& p, double x1, double y1, double x2, double y2) {
    p.drawLine(QPointF(x1, y1), QPointF(x2, y2));
}

void Fill(QPainter& p, const QPolygonF& shape) {
    p.save();
    p.setBrush(p.pen().color());
    p.setPen(Qt::NoPen);
    p.drawPolygon(shape);
    p.restore();
}

void Accent(QPainter& p) {
    QPen pen = p.pen();
    pen.setColor(QColor::fromRgb(Color::kAccent));
    p.setPen(pen);
}

void Page(QPainter& p) {
    p.drawPolygon(QPolygonF({{3.5, 1.5}, {9.5, 1.5}, {12.5, 4.5}, {12.5, 14.5}, {3.5, 14.5}}));
    p.drawPolyline(QPolygonF({{9.5, 1.5}, {9.5, 4.5}, {12.5, 4.5}}));
}

void DrawNew(QPainter& p) {
    Page(p);
    Accent(p);
    Line(p, 8, 7, 8, 12);
    Line(p, 5.5, 9.5, 10.5, 9.5);
}

void DrawOpen(QPainter& p) {
    p.drawPolyline(QPolygonF({{2.5, 13.5}, {2.5, 3.5}, {6.5, 3.5}, {8, 5.5}, {13.5, 5.5}, {13.5, 7.5}}));
    p.drawPolygon(QPolygonF({{2.5, 13.5}, {5, 7.5}, {15, 7.5}, {12.5, 13.5}}));
}

void DrawSave(QPainter& p) {
    p.drawPolygon(QPolygonF({{2.5, 2.5}, {11.5, 2.5}, {13.5, 4.5}, {13.5, 13.5}, {2.5, 13.5}}));
    p.drawRect(QRectF(5, 2.5, 5, 3.5));
    Accent(p);
    p.drawRect(QRectF(4.5, 9, 7, 4.5));
}

void DrawSelect(QPainter& p) {
    p.drawPolygon(QPolygonF({{4, 2}, {4, 12.5}, {6.7, 10}, {8.6, 14}, {10.4, 13.2}, {8.5, 9.3}, {12, 9}}));
}

void DrawMove(QPainter& p) {
    Line(p, 8, 2.5, 8, 13.5);
    Line(p, 2.5, 8, 13.5, 8);
    Fill(p, QPolygonF({{8, 0.8}, {10, 4}, {6, 4}}));
    Fill(p, QPolygonF({{8, 15.2}, {10, 12}, {6, 12}}));
    Fill(p, QPolygonF({{0.8, 8}, {4, 6}, {4, 10}}));
    Fill(p, QPolygonF({{15.2, 8}, {12, 6}, {12, 10}}));
}

void DrawRotate(QPainter& p) {
    p.drawArc(QRectF(2.5, 2.5, 11, 11), 60 * 16, 270 * 16);
    Fill(p, QPolygonF({{9, 0.4}, {13.4, 2.6}, {9.6, 5.6}}));
}

void DrawScale(QPainter& p) {
    p.drawRect(QRectF(2.5, 8.5, 5, 5));
    Accent(p);
    p.drawPolyline(QPolygonF({{9, 2.5}, {13.5, 2.5}, {13.5, 7}}));
    Line(p, 13.2, 2.8, 8.5, 7.5);
}

void DrawOneView(QPainter& p) {
    p.drawRoundedRect(QRectF(2.5, 3.5, 11, 9), 1, 1);
}

void DrawTwoViews(QPainter& p) {
    DrawOneView(p);
    Line(p, 8, 3.5, 8, 12.5);
}

void DrawFourViews(QPainter& p) {
    DrawTwoViews(p);
    Line(p, 2.5, 8, 13.5, 8);
}

void DrawGrid(QPainter& p) {
    p.drawPolygon(QPolygonF({{5, 4}, {11, 4}, {15, 12.5}, {1, 12.5}}));
    Line(p, 8, 4, 8, 12.5);
    Line(p, 3.5, 7.3, 12.5, 7.3);
}

void DrawFocus(QPainter& p) {
    for (int corner = 0; corner < 4; ++corner) {
        p.save();
        p.translate(8, 8);
        p.rotate(90.0 * corner);
        p.drawPolyline(QPolygonF({{-5.5, -2.5}, {-5.5, -5.5}, {-2.5, -5.5}}));
        p.restore();
    }
    Accent(p);
    p.drawEllipse(QPointF(8, 8), 2, 2);
}

void DrawDuplicate(QPainter& p) {
    p.drawPolyline(QPolygonF({{5, 11.5}, {2.5, 11.5}, {2.5, 2.5}, {11.5, 2.5}, {11.5, 5}}));
    Accent(p);
    p.drawRect(QRectF(5.5, 5.5, 8, 8));
}

void DrawDelete(QPainter& p) {
    QPen pen = p.pen();
    pen.setColor(QColor::fromRgb(Color::kDanger));
    p.setPen(pen);
    Line(p, 4, 4, 12, 12);
    Line(p, 12, 4, 4, 12);
}

void DrawGroup(QPainter& p) {
    p.drawRect(QRectF(3.5, 3.5, 5, 5));
    p.drawEllipse(QPointF(10.5, 10.5), 2.5, 2.5);
    Accent(p);
    QPen pen = p.pen();
    pen.setStyle(Qt::DotLine);
    p.setPen(pen);
    p.drawRect(QRectF(1.5, 1.5, 13, 13));
}

void DrawMesh(QPainter& p) {
    p.drawPolygon(QPolygonF({{8, 1.8}, {13.5, 4.6}, {13.5, 11.2}, {8, 14.2}, {2.5, 11.2}, {2.5, 4.6}}));
    p.drawPolyline(QPolygonF({{2.5, 4.6}, {8, 7.6}, {13.5, 4.6}}));
    Line(p, 8, 7.6, 8, 14.2);
}

void DrawCharacter(QPainter& p) {
    p.drawEllipse(QPointF(8, 3.6), 2.1, 2.1);
    p.drawPolyline(QPolygonF({{3.5, 8.2}, {8, 6.8}, {12.5, 8.2}}));
    Line(p, 8, 6.8, 8, 10);
    p.drawPolyline(QPolygonF({{5, 14.5}, {8, 10}, {11, 14.5}}));
}

void DrawLight(QPainter& p) {
    p.drawEllipse(QPointF(8, 6.5), 4, 4);
    p.drawPolyline(QPolygonF({{6.2, 10.2}, {6.2, 12.5}, {9.8, 12.5}, {9.8, 10.2}}));
    Line(p, 6.8, 14.4, 9.2, 14.4);
}

void DrawDynamicLight(QPainter& p) {
    QPen pen = p.pen();
    pen.setColor(QColor::fromRgb(Color::kFilm));
    p.setPen(pen);
    DrawLight(p);
}

void DrawSun(QPainter& p) {
    p.drawEllipse(QPointF(8, 8), 3, 3);
    for (int ray = 0; ray < 8; ++ray) {
        const double angle = ray * M_PI / 4;
        Line(p, 8 + 4.8 * std::cos(angle), 8 + 4.8 * std::sin(angle), 8 + 6.8 * std::cos(angle),
             8 + 6.8 * std::sin(angle));
    }
}

void DrawEmpty(QPainter& p) {
    Line(p, 8, 2, 8, 14);
    Line(p, 2, 8, 14, 8);
    Line(p, 4, 12, 12, 4);
}

void DrawSound(QPainter& p) {
    p.drawPolygon(QPolygonF({{2.5, 6}, {5, 6}, {8.5, 3}, {8.5, 13}, {5, 10}, {2.5, 10}}));
    p.drawArc(QRectF(7, 5, 5, 6), -60 * 16, 120 * 16);
    p.drawArc(QRectF(6, 3, 8.5, 10), -55 * 16, 110 * 16);
}

void DrawCameraPoint(QPainter& p) {
    p.drawRoundedRect(QRectF(1.5, 5, 8.5, 7), 1, 1);
    p.drawPolygon(QPolygonF({{10, 8.5}, {14.5, 5.5}, {14.5, 11.5}}));
    p.drawEllipse(QPointF(4, 3), 1.3, 1.3);
    p.drawEllipse(QPointF(7.6, 3), 1.3, 1.3);
}

void DrawFilm(QPainter& p) {
    p.drawRect(QRectF(2.5, 2.5, 11, 11));
    Line(p, 5, 2.5, 5, 13.5);
    Line(p, 11, 2.5, 11, 13.5);
    for (const double y : {5.2, 8.0, 10.8}) {
        Line(p, 2.5, y, 5, y);
        Line(p, 11, y, 13.5, y);
    }
}

void DrawBox(QPainter& p) {
    p.drawPolygon(QPolygonF({{2.5, 5}, {8, 2}, {13.5, 5}, {13.5, 11}, {8, 14}, {2.5, 11}}));
    p.drawPolyline(QPolygonF({{2.5, 5}, {8, 8}, {13.5, 5}}));
    Line(p, 8, 8, 8, 14);
}

void DrawPlane(QPainter& p) {
    p.drawPolygon(QPolygonF({{1.5, 11.5}, {5, 5.5}, {14.5, 5.5}, {11, 11.5}}));
}

void DrawSphere(QPainter& p) {
    p.drawEllipse(QPointF(8, 8), 6, 6);
    p.drawArc(QRectF(2, 6, 12, 4), 180 * 16, 180 * 16);
}

void DrawCylinder(QPainter& p) {
    p.drawEllipse(QRectF(3, 1.5, 10, 4));
    p.drawArc(QRectF(3, 10.5, 10, 4), 180 * 16, 180 * 16);
    Line(p, 3, 3.5, 3, 12.5);
    Line(p, 13, 3.5, 13, 12.5);
}

void DrawCone(QPainter& p) {
    p.drawArc(QRectF(2.5, 10.5, 11, 4), 180 * 16, 180 * 16);
    p.drawPolyline(QPolygonF({{2.5, 12.5}, {8, 1.5}, {13.5, 12.5}}));
}

void DrawCapsule(QPainter& p) {
    p.drawRoundedRect(QRectF(4.5, 1.5, 7, 13), 3.5, 3.5);
}

void DrawCamera(QPainter& p) {
    p.drawRoundedRect(QRectF(1.5, 4.5, 9, 7.5), 1, 1);
    p.drawPolygon(QPolygonF({{10.5, 8}, {14.5, 5}, {14.5, 11.5}}));
}

void DrawLabel(QPainter& p) {
    Line(p, 3, 3, 13, 3);
    Line(p, 8, 3, 8, 13.5);
}

void DrawEye(QPainter& p) {
    QPainterPath lid(QPointF(1.5, 8));
    lid.quadTo(8, 1.5, 14.5, 8);
    lid.quadTo(8, 14.5, 1.5, 8);
    p.drawPath(lid);
    p.drawEllipse(QPointF(8, 8), 2, 2);
}

void DrawEyeShut(QPainter& p) {
    QPainterPath lid(QPointF(1.5, 7));
    lid.quadTo(8, 13, 14.5, 7);
    p.drawPath(lid);
    Line(p, 4, 9.5, 2.8, 11.5);
    Line(p, 8, 10.2, 8, 12.5);
    Line(p, 12, 9.5, 13.2, 11.5);
}

void DrawLock(QPainter& p) {
    p.drawRect(QRectF(3.5, 7.5, 9, 6.5));
    p.drawArc(QRectF(5, 2, 6, 9), 0, 180 * 16);
}

void DrawSnapGrid(QPainter& p) {
    for (const double line : {3.0, 8.0, 13.0}) {
        Line(p, line, 2, line, 14);
        Line(p, 2, line, 14, line);
    }
    Accent(p);
    p.drawEllipse(QPointF(8, 8), 2.2, 2.2);
}

void DrawSnapAngle(QPainter& p) {
    p.drawPolyline(QPolygonF({{13.5, 13.5}, {2.5, 13.5}, {11, 3.5}}));
    Accent(p);
    p.drawArc(QRectF(-3.5, 7.5, 12, 12), 0, 50 * 16);
}

void DrawSnapSurface(QPainter& p) {
    Line(p, 1.5, 13.5, 14.5, 13.5);
    p.drawRect(QRectF(5, 2.5, 6, 4.5));
    Accent(p);
    Line(p, 8, 8, 8, 12.5);
    p.drawPolyline(QPolygonF({{6, 10.5}, {8, 12.5}, {10, 10.5}}));
}

void DrawSnapVertex(QPainter& p) {
    p.drawPolyline(QPolygonF({{2.5, 14}, {2.5, 4.5}, {13.5, 4.5}}));
    Accent(p);
    p.drawEllipse(QPointF(2.5, 4.5), 2.2, 2.2);
}

void DrawLocalAxes(QPainter& p) {
    p.drawPolygon(QPolygonF({{8, 1.5}, {14, 6.5}, {9, 12.5}, {3, 7.5}}));
    Accent(p);
    Line(p, 8.5, 7, 12.5, 14.5);
    Line(p, 8.5, 7, 1.5, 14);
}

void DrawPivot(QPainter& p) {
    p.drawRect(QRectF(2.5, 2.5, 11, 11));
    Accent(p);
    p.drawEllipse(QPointF(2.5, 13.5), 2, 2);
}

void DrawMoreRight(QPainter& p) {
    p.drawPolyline(QPolygonF({{3.5, 3.5}, {7.5, 8}, {3.5, 12.5}}));
    p.drawPolyline(QPolygonF({{8.5, 3.5}, {12.5, 8}, {8.5, 12.5}}));
}

void DrawMoreBelow(QPainter& p) {
    p.drawPolyline(QPolygonF({{3.5, 3.5}, {8, 7.5}, {12.5, 3.5}}));
    p.drawPolyline(QPolygonF({{3.5, 8.5}, {8, 12.5}, {12.5, 8.5}}));
}

void DrawCloseWindow(QPainter& p) {
    Line(p, 4, 4, 12, 12);
    Line(p, 12, 4, 4, 12);
}

void DrawFloatWindow(QPainter& p) {
    p.drawRect(QRectF(3, 6, 7, 7));
    p.drawPolyline(QPolygonF({{6, 3.5}, {12.5, 3.5}, {12.5, 10}}));
}

constexpr Draw kDrawings[] = {
    DrawNew,          DrawOpen,        DrawSave,        DrawSelect,    DrawMove,        DrawRotate,
    DrawScale,        DrawOneView,     DrawTwoViews,    DrawFourViews, DrawGrid,        DrawFocus,
    DrawDuplicate,    DrawDelete,      DrawGroup,       DrawMesh,      DrawCharacter,   DrawLight,
    DrawDynamicLight, DrawSun,         DrawEmpty,       DrawSound,     DrawCameraPoint, DrawFilm,
    DrawBox,          DrawPlane,       DrawSphere,      DrawCylinder,  DrawCone,        DrawCapsule,
    DrawCamera,       DrawLabel,       DrawEye,         DrawEyeShut,   DrawLock,        DrawSnapGrid,
    DrawSnapAngle,    DrawSnapSurface, DrawSnapVertex,  DrawLocalAxes, DrawPivot,       DrawMoreRight,
    DrawMoreBelow,    DrawCloseWindow, DrawFloatWindow,
};
static_assert(std::size(kDrawings) == static_cast<std::size_t>(IconId::FloatWindow) + 1);

class VectorIcon : public QIconEngine {
public:
    explicit VectorIcon(Draw drawing) : draw(drawing) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
        if (mode == QIcon::Selected) {
            const qreal ratio = painter->device()->devicePixelRatioF();
            painter->drawPixmap(rect, pixmap((QSizeF(rect.size()) * ratio).toSize(), mode, state));
            return;
        }
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / 16.0, rect.height() / 16.0);
        painter->setOpacity(mode == QIcon::Disabled ? 0.35 : 1.0);
        painter->setPen(
            QPen(QColor::fromRgb(Color::kIcon), 1.25, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->setBrush(Qt::NoBrush);
        draw(*painter);
        painter->restore();
    }
    /// Of a row that is highlighted it has one colour: no other stands out from the ground there.
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        const bool isSelected = mode == QIcon::Selected;
        paint(&painter, picture.rect(), isSelected ? QIcon::Normal : mode, state);
        if (isSelected) {
            painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
            painter.fillRect(picture.rect(), QColor::fromRgb(PresentColors().highlightText));
        }
        return picture;
    }
    QIconEngine* clone() const override { return new VectorIcon(draw); }

private:
    Draw draw;
};

} // namespace

QIcon MakeIcon(IconId id) {
    return QIcon(new VectorIcon(kDrawings[static_cast<std::size_t>(id)]));
}

} // namespace stage
