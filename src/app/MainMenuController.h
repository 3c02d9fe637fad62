#pragma once

#include <QObject>

#include <memory>

class MainMenu;
class MainVC;
struct MainOutlets;

/// What the entries of the application's menu do, and when they can be chosen. While the menu is
/// closed all of them are enabled, so that their shortcuts are asked at the moment they are
/// pressed.
///
/// Thread:       main
/// Owns:         the workflow, with others
/// Holds weakly: the menu and what the layout made, which outlive it
class MainMenuController : public QObject
{
    Q_OBJECT

  public:
    MainMenuController(MainMenu *menu, std::shared_ptr<MainVC> workflow, const MainOutlets &outlets,
                       QObject *parent);

  Q_SIGNALS:
    void quitChosen();

  private:
    void connectFile();
    void connectWindow();
    void showWhatCanBeChosen();
    void enableAll();
    [[nodiscard]] bool canAdd() const;
    [[nodiscard]] bool canStart() const;

    MainMenu *menu_;
    std::shared_ptr<MainVC> workflow_;
    const MainOutlets &outlets_;
};
