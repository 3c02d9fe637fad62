#pragma once

#include "ui/ContentView.h"

#include <QVariantAnimation>

#include <functional>

class AddCallout;
class ButtonBlue;
class DropZone;
class ImageView;

/// The view that waits for files: a place to drop them on, and a button to choose them with.
///
/// Thread: main
class DropView : public ContentView
{
    Q_OBJECT

  public:
    explicit DropView(QWidget *parent = nullptr);

    void setMethodText(const QString &text);
    /// What it says while files hang over the window; without a heading none do.
    void setDrag(const QString &heading, const QString &sentence);
    /// Who says whether to do without fading; the desktop where nobody else does.
    void setPrefersReducedMotion(std::function<bool()> predicate);

    [[nodiscard]] QWidget *viewBtnInfo() const;
    [[nodiscard]] QWidget *imgBtnInfo() const;
    /// Puts the callout back behind the header, hidden.
    void resetBtnInfo();

    [[nodiscard]] ImageView *imageView() const { return imageView_; }
    [[nodiscard]] DropZone *zone() const { return zone_; }
    [[nodiscard]] TextLabel *heading() const { return heading_; }
    [[nodiscard]] TextLabel *sentence() const { return sentence_; }
    [[nodiscard]] ButtonBlue *chooseButton() const { return chooseButton_; }
    [[nodiscard]] TextLabel *hint() const { return hint_; }
    [[nodiscard]] TextLabel *methodText() const { return methodText_; }

    [[nodiscard]] QWidget *firstFocus() const override;
    [[nodiscard]] std::vector<QWidget *> tabStops() const override;

  Q_SIGNALS:
    void chooseClicked();
    /// The callout was clicked, which acts like the button that it points to.
    void addClicked();

  protected:
    void layOut(const ViewRuler &ruler) override;
    [[nodiscard]] QAbstractButton *defaultButton() const override;

  private:
    void fillIn();
    void showDrag(double drag);
    void showWords(const QString &heading, const QString &sentence);
    void showUsualWords();

    DropZone *zone_;
    ImageView *imageView_;
    TextLabel *heading_;
    TextLabel *sentence_;
    ButtonBlue *chooseButton_;
    TextLabel *hint_;
    TextLabel *methodText_;
    AddCallout *viewBtnInfo_;
    QVariantAnimation fade_;
    std::function<bool()> prefersReducedMotion_;
    double drag_ = 0;
};
