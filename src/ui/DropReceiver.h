#pragma once

#include <QByteArray>

#include <memory>
#include <vector>

/// Who takes the files that were dropped on the window: the application's delegate. Its operations
/// are optional and are called by OptionalDelegate.
///
/// Thread: main
class DropReceiver
{
  public:
    enum class Call { openFiles };

    virtual ~DropReceiver();

    virtual bool answers(Call call) const = 0;
    /// Paths as the bytes they are.
    virtual void openFiles(const std::vector<QByteArray> &paths);

    /// The one that drops go to; held weakly.
    static void setShared(std::weak_ptr<DropReceiver> receiver);
    static std::weak_ptr<DropReceiver> shared();

  protected:
    DropReceiver() = default;

  private:
    Q_DISABLE_COPY_MOVE(DropReceiver)
};
