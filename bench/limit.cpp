// The limit that bench/run holds vantorel-cli against: the same system calls in a bare loop, with
// the same bytes. No queue, no threads, no progress, no care for files that change meanwhile.
//
// Usage: vantorel-bench-limit METHOD PATH...
// Erases the files and folders named, without asking. Of the methods it knows 1, 2, 3, 4 and 6.

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

enum class Pass { Zeros, Ones, Random };

constexpr std::size_t blockSize = 4096;
using Block = std::array<std::uint8_t, blockSize>;

/// Parents stand before what they hold.
struct Found
{
    std::vector<std::string> files;
    std::vector<std::string> folders;
};

[[noreturn]] void die(const char *call, const std::string &path)
{
    std::fprintf(stderr, "vantorel-bench-limit: %s: %s: %s\n", call, path.c_str(),
                 std::strerror(errno));
    std::exit(1);
}

[[noreturn]] void refuse(const char *problem)
{
    std::fprintf(stderr, "vantorel-bench-limit: %s\n", problem);
    std::exit(2);
}

std::vector<Pass> passesOf(std::string_view method)
{
    if (method == "1")
        return {Pass::Zeros};
    if (method == "2")
        return {Pass::Random};
    if (method == "3")
        return {Pass::Zeros, Pass::Random};
    if (method == "4")
        return {Pass::Zeros, Pass::Ones, Pass::Random};
    if (method == "6")
        return {Pass::Ones,   Pass::Zeros,  Pass::Random, Pass::Random,
                Pass::Random, Pass::Random, Pass::Random};
    refuse("the method must be 1, 2, 3, 4 or 6");
}

void readFolder(const std::string &path, Found &found)
{
    DIR *folder = ::opendir(path.c_str());
    if (folder == nullptr)
        die("opendir", path);
    while (const dirent *entry = ::readdir(folder)) {
        const std::string_view name = entry->d_name;
        if (name == "." || name == "..")
            continue;
        auto &list = entry->d_type == DT_DIR ? found.folders : found.files;
        list.push_back(path + '/' + entry->d_name);
    }
    ::closedir(folder);
}

void walk(const std::string &path, Found &found)
{
    struct stat status = {};
    if (::lstat(path.c_str(), &status) != 0)
        die("lstat", path);
    if (!S_ISDIR(status.st_mode)) {
        found.files.push_back(path);
        return;
    }
    std::size_t next = found.folders.size();
    found.folders.push_back(path);
    for (; next < found.folders.size(); ++next)
        readFolder(std::string(found.folders[next]), found);
}

void fill(Block &block, Pass pass)
{
    static std::array<std::uint32_t, blockSize> draws;
    if (pass != Pass::Random) {
        block.fill(pass == Pass::Zeros ? 0x00 : 0xFF);
        return;
    }
    ::arc4random_buf(draws.data(), sizeof draws);
    std::transform(draws.begin(), draws.end(), block.begin(),
                   [](std::uint32_t draw) { return static_cast<std::uint8_t>(draw % 255); });
}

void overwrite(int fd, off_t size, const Block &block, const std::string &path)
{
    if (::lseek(fd, 0, SEEK_SET) != 0)
        die("lseek", path);
    while (size > 0) {
        const auto count = static_cast<std::size_t>(std::min(size, off_t(blockSize)));
        const ssize_t written = ::write(fd, block.data(), count);
        if (written <= 0)
            die("write", path);
        size -= written;
    }
    if (::fsync(fd) != 0)
        die("fsync", path);
}

void erase(const std::string &path, const std::vector<Pass> &passes)
{
    static Block block;
    const int fd = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
    struct stat status = {};
    if (fd < 0 || ::fstat(fd, &status) != 0)
        die("open", path);
    for (const Pass pass : passes) {
        fill(block, pass);
        overwrite(fd, status.st_size, block, path);
    }
    if (::close(fd) != 0)
        die("close", path);
    if (::unlink(path.c_str()) != 0)
        die("unlink", path);
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc < 3)
        refuse("usage: vantorel-bench-limit METHOD PATH...");
    const std::vector<Pass> passes = passesOf(argv[1]);
    Found found;
    for (int at = 2; at < argc; ++at)
        walk(argv[at], found);
    for (const std::string &path : found.files)
        erase(path, passes);
    for (auto path = found.folders.rbegin(); path != found.folders.rend(); ++path) {
        if (::rmdir(path->c_str()) != 0)
            die("rmdir", *path);
    }
    return 0;
}
