#pragma once

#include "ui/Card.h"
#include "ui/TextLabel.h"

#include <vector>

/// One setting: its name, a remark, and at the right what it is set with. A click on the name of a
/// setting that is on or off turns it over.
///
/// Thread: main
/// Units:  lengths in points of the design
class PreferenceRow : public QWidget
{
    Q_OBJECT

  public:
    static constexpr int rowHeight = 36;

    PreferenceRow(const QString &label, QWidget *parent);

    /// Takes the widget as its own, names it for screen readers after the row where it has no name,
    /// and keeps it this large.
    void setControl(QWidget *control, QSizeF size);
    /// A widget left of the control, as wide as there is room.
    void setField(QWidget *field);
    void setRemark(const QString &remark);

    [[nodiscard]] TextLabel *label() const { return label_; }
    [[nodiscard]] TextLabel *remark() const { return remark_; }

  protected:
    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

  private:
    void adopt(QWidget *widget);
    void layOut();

    TextLabel *label_;
    TextLabel *remark_;
    QWidget *control_ = nullptr;
    QWidget *field_ = nullptr;
    QSizeF controlSize_;
};

/// Settings that belong together, on one card, with lines between them.
///
/// Thread: main
/// Owns:   its rows
class PreferenceGroup : public Card
{
    Q_OBJECT

  public:
    explicit PreferenceGroup(QWidget *parent) : Card(parent) {}

    PreferenceRow *addRow(const QString &label);
    [[nodiscard]] const std::vector<PreferenceRow *> &rows() const { return rows_; }
    [[nodiscard]] const std::vector<QWidget *> &lines() const { return lines_; }

  protected:
    void resizeEvent(QResizeEvent *event) override;

  private:
    std::vector<PreferenceRow *> rows_;
    std::vector<QWidget *> lines_;
};
