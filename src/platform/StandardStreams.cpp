#include "platform/StandardStreams.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cwchar>

#include <fcntl.h>
#include <locale.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

void StandardStreams::secure()
{
    for (const int fd : {Input, Output, Error}) {
        // The lowest free number is taken, so this opens exactly the one that is missing.
        if (::fcntl(fd, F_GETFD) < 0 && ::open("/dev/null", O_RDWR) != fd)
            std::abort();
    }
    std::signal(SIGPIPE, SIG_IGN);
}

bool StandardStreams::isTerminal(Stream stream)
{
    return ::isatty(stream) == 1;
}

int StandardStreams::terminalColumns(Stream stream)
{
    struct winsize size = {};
    const bool isKnown = ::ioctl(stream, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return isKnown ? size.ws_col : 80;
}

int StandardStreams::columnsOf(const QString &text)
{
    // wcwidth() knows nothing beyond ASCII in the plain C locale, which a terminal may well have.
    static const locale_t utf8 = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    const locale_t previous = ::uselocale(utf8);
    int columns = 0;
    for (const char32_t character : text.toStdU32String())
        columns += std::max(::wcwidth(static_cast<wchar_t>(character)), 0);
    ::uselocale(previous);
    return columns;
}

void StandardStreams::write(Stream stream, const QByteArray &bytes)
{
    for (qsizetype done = 0; done < bytes.size();) {
        const ssize_t count = ::write(stream, bytes.constData() + done,
                                      static_cast<std::size_t>(bytes.size() - done));
        if (count >= 0) {
            done += count;
        } else if (errno == EAGAIN) {
            struct pollfd ready = {stream, POLLOUT, 0};
            ::poll(&ready, 1, -1);
        } else if (errno != EINTR) {
            return;
        }
    }
}

void StandardStreams::discardInput()
{
    ::tcflush(Input, TCIFLUSH);
}

QByteArray StandardStreams::read(Stream stream)
{
    std::array<char, 4096> buffer{};
    const ssize_t count = ::read(stream, buffer.data(), buffer.size());
    return count > 0 ? QByteArray(buffer.data(), count) : QByteArray();
}
