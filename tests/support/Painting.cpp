#include "support/Painting.h"

#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QWidget>

#include <algorithm>

namespace quillbrook {

namespace {

class RecordingEngine final : public QPaintEngine {
public:
    explicit RecordingEngine(Painting& painting)
        : QPaintEngine(QPaintEngine::AllFeatures)
        , painting(painting)
    {
    }

    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    Type type() const override { return User; }

    void updateState(const QPaintEngineState& state) override
    {
        if (state.state().testFlag(DirtyPen)) {
            pen = state.pen();
        }
        if (state.state().testFlag(DirtyBrush)) {
            brush = state.brush();
        }
    }

    void drawPath(const QPainterPath& path) override
    {
        painting.shapes.push_back({.outline = path,
            .fill = brush.style() == Qt::NoBrush ? QColor() : brush.color(),
            .line = pen.style() == Qt::NoPen ? QColor() : pen.color()});
    }

    void drawPolygon(const QPointF* points, int count, PolygonDrawMode) override
    {
        drawPath(outlineOf(points, count));
    }

    void drawPolygon(const QPoint* points, int count, PolygonDrawMode) override
    {
        drawPath(outlineOf(points, count));
    }

    void drawTextItem(const QPointF&, const QTextItem& item) override
    {
        painting.texts.push_back({.text = item.text().toStdString(), .color = pen.color()});
    }

    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}

private:
    template <typename Point>
    static QPainterPath outlineOf(const Point* points, int count)
    {
        QPainterPath path;
        for (int i = 0; i < count; ++i) {
            i == 0 ? path.moveTo(points[i]) : path.lineTo(points[i]);
        }
        return path;
    }

    Painting& painting;
    QPen pen{};
    QBrush brush{};
};

class RecordingDevice final : public QPaintDevice {
public:
    explicit RecordingDevice(Painting& painting) : engine(painting) {}

    QPaintEngine* paintEngine() const override { return &engine; }

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmWidth:
        case PdmHeight:
            return 4000;
        case PdmDepth:
            return 32;
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return 96;
        case PdmDevicePixelRatio:
            return 1;
        default:
            return QPaintDevice::metric(metric);
        }
    }

private:
    mutable RecordingEngine engine;
};

bool isCircle(const QPainterPath& outline)
{
    QPainterPath circle;
    circle.addEllipse(outline.boundingRect());
    return outline.elementCount() == circle.elementCount()
        && outline.boundingRect().width() == outline.boundingRect().height();
}

} // namespace

std::string Painting::allText() const
{
    std::string all;
    for (const Text& each : texts) {
        all += each.text;
    }
    return all;
}

bool Painting::hasFilled(const QPainterPath& form, const QColor& color) const
{
    return std::any_of(shapes.begin(), shapes.end(), [&](const Shape& shape) {
        return shape.outline.elementCount() == form.elementCount() && shape.fill.isValid()
            && shape.fill.rgba() == color.rgba();
    });
}

std::vector<QColor> Painting::circles() const
{
    std::vector<QColor> fills;
    for (const Shape& shape : shapes) {
        if (isCircle(shape.outline)) {
            fills.push_back(shape.fill);
        }
    }
    return fills;
}

Painting paintingOf(QWidget& widget)
{
    Painting painting;
    RecordingDevice device(painting);
    widget.render(&device, QPoint(), QRegion(), QWidget::DrawChildren);
    return painting;
}

Painting paintingOf(const std::function<void(QPainter&)>& draw)
{
    Painting painting;
    RecordingDevice device(painting);
    QPainter painter(&device);
    draw(painter);
    return painting;
}

} // namespace quillbrook
