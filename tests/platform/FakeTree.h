#pragma once

#include "kit/ForwardingSystemCalls.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include <dirent.h>

/// A tree of folders in memory, as deep and as wide as it was made.
class FakeTree final : public ForwardingSystemCalls
{
  public:
    using Node = std::size_t;
    static constexpr Node top = 0;

    /// Answers the new node.
    Node add(Node parent, const std::string &name, FileKind kind)
    {
        nodes_.push_back({parent, kind, {}});
        nodes_[parent].children.emplace(name, nodes_.size() - 1);
        return nodes_.size() - 1;
    }
    void move(Node node, Node newParent, const std::string &newName)
    {
        std::erase_if(nodes_[nodes_[node].parent].children,
                      [node](const auto &child) { return child.second == node; });
        nodes_[node].parent = newParent;
        nodes_[newParent].children.emplace(newName, node);
    }
    int openNode(Node node)
    {
        const int fd = nextFd_++;
        open_[fd] = {node, nodes_[node].children.cbegin()};
        mostOpen_ = std::max(mostOpen_, open_.size());
        return fd;
    }
    [[nodiscard]] std::size_t openNow() const { return open_.size(); }
    [[nodiscard]] std::size_t mostOpen() const { return mostOpen_; }

    int open(int folder, const char *path, Access, LastLink) override
    {
        if (beforeOpen)
            beforeOpen(path);
        const auto at = open_.find(folder);
        if (at == open_.end())
            return -EBADF;
        const Entry &entry = nodes_[at->second.node];
        if (std::strcmp(path, "..") == 0)
            return openNode(entry.parent);
        const auto child = entry.children.find(path);
        if (child == entry.children.end())
            return -ENOENT;
        return nodes_[child->second].kind == FileKind::Folder ? openNode(child->second) : -ENOTDIR;
    }
    int close(int fd) override { return open_.erase(fd) == 1 ? 0 : -EBADF; }
    int status(int fd, FileStatus &status) override
    {
        const auto at = open_.find(fd);
        if (at == open_.end())
            return -EBADF;
        status = {};
        status.inode = at->second.node + 1;
        status.kind = nodes_[at->second.node].kind;
        return 0;
    }
    std::int64_t readFolder(int fd, void *buffer, std::size_t capacity) override
    {
        const auto at = open_.find(fd);
        if (at == open_.end())
            return -EBADF;
        const auto end = nodes_[at->second.node].children.cend();
        std::size_t filled = 0;
        for (auto &next = at->second.next; next != end; ++next) {
            const std::size_t size = lengthOf(next->first);
            if (filled + size > capacity)
                break;
            auto *entry = reinterpret_cast<dirent64 *>(static_cast<std::byte *>(buffer) + filled);
            entry->d_reclen = static_cast<unsigned short>(size);
            entry->d_type = nodes_[next->second].kind == FileKind::Folder ? DT_DIR : DT_REG;
            std::memcpy(entry->d_name, next->first.c_str(), next->first.size() + 1);
            filled += size;
        }
        return static_cast<std::int64_t>(filled);
    }

    std::function<void(const std::string &name)> beforeOpen;

  private:
    struct Entry
    {
        Node parent = top;
        FileKind kind = FileKind::Folder;
        std::map<std::string, Node> children;
    };
    struct Open
    {
        Node node = top;
        std::map<std::string, Node>::const_iterator next;
    };

    static std::size_t lengthOf(const std::string &name)
    {
        return (offsetof(dirent64, d_name) + name.size() + 1 + 7) / 8 * 8;
    }

    std::vector<Entry> nodes_ = std::vector<Entry>(1);
    std::map<int, Open> open_;
    int nextFd_ = 1'000'000;
    std::size_t mostOpen_ = 0;
};
