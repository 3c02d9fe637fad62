#pragma once

#include "ui/Caution.h"
#include "ui/ContentView.h"

#include <cstdint>
#include <functional>

class ButtonRed;
class CautionBand;
class MethodSelector;
class PassStrip;
class QueueTable;
class VTLLine;

/// The view that shows what a run would erase and how, with the button that starts it.
///
/// The button does nothing in the first moments of the view: a key or a click that was meant for
/// what was there before must not start a run. Nor does a key that repeats, or a press that began
/// before the view came or its contents changed.
///
/// Thread: main
class ReadyView : public ContentView
{
    Q_OBJECT

  public:
    struct Contents
    {
        QString count;
        QString folders;
        QString size;
        QString work;
        bool canStart = false;
    };
    /// Milliseconds from some fixed moment on.
    using Clock = std::function<std::int64_t()>;
    static constexpr std::int64_t guardMilliseconds = 400;

    explicit ReadyView(QWidget *parent = nullptr);

    void setContents(const Contents &contents);
    /// The text of the chosen method, up to three lines.
    void setDescription(const QString &description);
    void setPasses(std::int64_t method, const QString &label);
    void setCautions(const CautionTexts &cautions);
    void setClock(Clock clock) { clock_ = std::move(clock); }

    [[nodiscard]] QueueTable *table() const { return table_; }
    [[nodiscard]] MethodSelector *methodSelector() const { return methodSelector_; }
    [[nodiscard]] PassStrip *passStrip() const { return passStrip_; }
    [[nodiscard]] CautionBand *cautionBand() const { return cautionBand_; }
    [[nodiscard]] ButtonRed *startButton() const { return startButton_; }
    [[nodiscard]] TextLabel *countText() const { return countText_; }
    [[nodiscard]] TextLabel *foldersText() const { return foldersText_; }
    [[nodiscard]] TextLabel *sizeText() const { return sizeText_; }
    [[nodiscard]] TextLabel *workText() const { return workText_; }
    [[nodiscard]] TextLabel *methodLabel() const { return methodLabel_; }
    [[nodiscard]] TextLabel *passesLabel() const { return passesLabel_; }
    [[nodiscard]] TextLabel *description() const { return description_; }
    [[nodiscard]] TextLabel *warning() const { return warning_; }
    [[nodiscard]] VTLLine *line() const { return line_; }

    [[nodiscard]] QWidget *firstFocus() const override;
    [[nodiscard]] std::vector<QWidget *> tabStops() const override;
    void viewDidAppear() override;

  Q_SIGNALS:
    void startClicked();

  public Q_SLOTS:
    /// What the button does, for its shortcut; under the same guard.
    void start();

  protected:
    void layOut(const ViewRuler &ruler) override;
    void showEvent(QShowEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

  private:
    void fillIn();
    [[nodiscard]] bool isGuarded() const;

    TextLabel *countText_;
    TextLabel *foldersText_;
    TextLabel *sizeText_;
    TextLabel *workText_;
    QueueTable *table_;
    TextLabel *methodLabel_;
    TextLabel *passesLabel_;
    MethodSelector *methodSelector_;
    PassStrip *passStrip_;
    TextLabel *description_;
    CautionBand *cautionBand_;
    VTLLine *line_;
    TextLabel *warning_;
    ButtonRed *startButton_;
    Clock clock_;
    std::int64_t shownAt_ = 0;
    bool isPressForgotten_ = false; ///< the button may still be held
};
