#pragma once

#include <QList>
#include <QRectF>
#include <QWidget>

#include <cstdint>
#include <optional>

/// The passes of a wipe method, one cell each, drawn as what they write; in a run also how far it
/// is. A method outside the catalogue has no cells.
///
/// Thread: main
/// Units:  logical pixels
class PassStrip : public QWidget
{
    Q_OBJECT

  public:
    enum class CellKind { Zeros, HighBytes, Random, Pattern };

    static constexpr int usualCellHeight = 16;

    explicit PassStrip(QWidget *parent = nullptr);

    void setMethod(std::int64_t method);
    [[nodiscard]] std::int64_t method() const { return method_; }
    /// In the design's pixels, at a font of 13.
    /// 1 for the first pass; none at rest.
    void setCurrentPass(std::optional<int> pass);
    [[nodiscard]] std::optional<int> currentPass() const { return currentPass_; }
    /// Left or right.
    void setAlignment(Qt::Alignment alignment);

    /// The drawing of each pass of the method.
    static QList<CellKind> kinds(std::int64_t method);
    /// The places of `count` cells at the left of a rectangle, or at its right. Every cell has the
    /// same whole width. Pure.
    static QList<QRectF> cells(int count, const QRectF &rect, double scale = 1,
                               Qt::Alignment alignment = Qt::AlignLeft);
    static QList<QRectF> cellsOf(std::int64_t method, const QRectF &rect, double scale = 1,
                                 Qt::Alignment alignment = Qt::AlignLeft);
    static void paintCells(QPainter &painter, const QRectF &rect, std::int64_t method,
                           std::optional<int> currentPass = std::nullopt,
                           Qt::Alignment alignment = Qt::AlignLeft);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent *event) override;

  private:
    void passesChanged();

    std::int64_t method_ = 0;
    std::optional<int> currentPass_;
    Qt::Alignment alignment_ = Qt::AlignLeft;
};
