#pragma once

#include <QIconEngine>

/// An icon that is one of the application's drawings, drawn anew at each size.
///
/// Thread: main
class PictureIcon : public QIconEngine
{
  public:
    explicit PictureIcon(QString name) : name_(std::move(name)) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QIconEngine *clone() const override;
    bool isNull() override;
    QString iconName() override;

  private:
    QString name_;
};
