#pragma once

#include "engine/WipeDescriptionObject.h"
#include "ui/ControlButton.h"

#include <cstdint>
#include <vector>

class MethodList;

/// Shows the chosen wipe method and opens the list of all. Empty while the method's number is
/// outside the catalogue. The wheel does nothing to it.
///
/// Thread: main
class MethodSelector : public ControlButton
{
    Q_OBJECT

  public:
    explicit MethodSelector(QWidget *parent = nullptr);

    /// A method's number is its index; entry 0 is no method.
    void setMethods(const std::vector<WipeDescriptionObject> &methods);
    void setCurrentMethod(std::int64_t method);
    [[nodiscard]] std::int64_t currentMethod() const { return current_; }
    /// The shown name; empty outside the catalogue.
    [[nodiscard]] QString currentName() const;
    /// Its list; made when it is first asked for or opened.
    MethodList *list();
    [[nodiscard]] bool isListOpen() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

  Q_SIGNALS:
    /// The user chose; the selector shows it already.
    void methodChosen(std::int64_t method);

  public Q_SLOTS:
    void openList();

  protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

  private:
    void takeChoice(std::int64_t method);
    [[nodiscard]] const WipeDescriptionObject *current() const;

    std::vector<WipeDescriptionObject> methods_;
    std::int64_t current_ = 0;
    MethodList *list_ = nullptr;
};
