#pragma once

#include "platform/FolderListing.h"

#include <QByteArray>
#include <QDialog>

#include <vector>

class ButtonBlue;
class OpenPanelModel;
class PlainButton;
class QCheckBox;
class QLineEdit;
class QListWidget;
class QTreeView;
class TextLabel;

/// The panel in which files and folders, several and both at once, are chosen. It lies on its
/// window alone, deletes itself when it is closed, and leaves no trace of the folders that it
/// showed.
///
/// Paths are the bytes on the disk, whatever they spell. Folders are read on another thread: one
/// that is slow or has a million names keeps nobody waiting.
///
/// Thread:  main
/// Failure: a folder that cannot be read says why in the panel
class OpenPanel : public QDialog
{
    Q_OBJECT

  public:
    /// What finished() says: the responses of the panel.
    enum Response { CancelResponse = 0, OkResponse = 1 };

    explicit OpenPanel(QWidget *parent);
    ~OpenPanel() override;

    void setPrompt(const QString &prompt);
    [[nodiscard]] QString prompt() const;

    /// Shows this folder; a file's path shows its folder, with the file chosen.
    void setDirectory(const QByteArray &path);
    [[nodiscard]] QByteArray directory() const { return directory_; }
    /// What is chosen, in the order of the rows.
    [[nodiscard]] std::vector<QByteArray> paths() const;
    [[nodiscard]] bool isReading() const { return reading_ != nullptr; }

    [[nodiscard]] QTreeView *list() const { return list_; }
    [[nodiscard]] QLineEdit *pathField() const { return pathField_; }
    [[nodiscard]] QListWidget *places() const { return places_; }
    [[nodiscard]] ButtonBlue *okButton() const { return ok_; }
    [[nodiscard]] PlainButton *cancelButton() const { return cancel_; }
    [[nodiscard]] QCheckBox *hiddenSwitch() const { return hidden_; }

    /// The path that a text in the field means, seen from `folder`. Pure.
    static QByteArray typedPath(const QString &text, const QByteArray &folder,
                                const QByteArray &home);

  Q_SIGNALS:
    void finished(int response, const std::vector<QByteArray> &paths);

  protected:
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

  private:
    void makeLayout();
    void makeList();
    void makePlaces();
    void connectParts();
    void end(int result);
    void take(const FolderListing::Result &result);
    void showFolder(FolderListing::Result result);
    void showError(int error);
    void showSelection();
    void activate(const QModelIndex &index);
    void goUp();
    void goToTyped();
    void takeChosen();
    void showPath();

    QLineEdit *pathField_;
    PlainButton *up_;
    QListWidget *places_;
    QTreeView *list_;
    OpenPanelModel *model_;
    TextLabel *remark_;
    QCheckBox *hidden_;
    PlainButton *cancel_;
    ButtonBlue *ok_;
    QByteArray directory_;
    QByteArray chosenNext_;
    QString shownPath_;
    FolderListing::Cancel reading_;
};
