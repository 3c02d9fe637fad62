#pragma once

#include <QByteArray>
#include <QStringList>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cwchar>

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <unistd.h>

/// A terminal of the test's own: what a program shows on it, and keys typed into it. Echoes what is
/// typed, as a terminal does.
class Pty
{
  public:
    explicit Pty(int columns = 80)
    {
        struct winsize size = {24, static_cast<unsigned short>(columns), 0, 0};
        if (::openpty(&master_, &terminal_, nullptr, nullptr, &size) != 0)
            qFatal("no pseudo terminal: %s", std::strerror(errno));
        ::fcntl(master_, F_SETFD, FD_CLOEXEC);
        ::fcntl(terminal_, F_SETFD, FD_CLOEXEC);
    }
    ~Pty()
    {
        ::close(master_);
        ::close(terminal_);
    }
    Pty(const Pty &) = delete;
    Pty &operator=(const Pty &) = delete;

    /// The end that a program gets for its standard streams.
    [[nodiscard]] int terminal() const { return terminal_; }
    void type(const QByteArray &keys) const
    {
        [[maybe_unused]] const ssize_t count =
            ::write(master_, keys.constData(), size_t(keys.size()));
    }
    /// Everything shown so far.
    const QByteArray &shown()
    {
        std::array<char, 4096> buffer{};
        for (struct pollfd readable = {master_, POLLIN, 0}; ::poll(&readable, 1, 0) == 1;) {
            const ssize_t count = ::read(master_, buffer.data(), buffer.size());
            if (count <= 0)
                break;
            shown_.append(buffer.data(), count);
        }
        return shown_;
    }

  private:
    int master_ = -1;
    int terminal_ = -1;
    QByteArray shown_;
};

/// What a terminal makes of bytes: rows of text. Knows "\r", "\n" and wide characters, and wraps.
class Screen
{
  public:
    Screen(const QByteArray &shown, int columns) : columns_(columns)
    {
        for (const char32_t character : QString::fromUtf8(shown).toStdU32String())
            take(character);
    }

    /// Without the blanks at their ends, which nobody sees.
    [[nodiscard]] QStringList rows() const
    {
        QStringList rows;
        for (const std::u32string &row : rows_) {
            QString text = QString::fromStdU32String(row);
            text.remove(QChar(u'\0')); // the second half of a wide character
            while (text.endsWith(QLatin1Char(' ')))
                text.chop(1);
            rows.append(text);
        }
        return rows;
    }
    [[nodiscard]] int widestColumn() const { return widest_; }

  private:
    void take(char32_t character)
    {
        if (character == U'\r') {
            column_ = 0;
        } else if (character == U'\n') {
            rows_.emplace_back();
        } else if (const int width = std::max(::wcwidth(static_cast<wchar_t>(character)), 0);
                   width > 0) {
            put(character, size_t(width));
        }
    }
    void put(char32_t character, size_t width)
    {
        if (column_ + width > size_t(columns_)) {
            rows_.emplace_back();
            column_ = 0;
        }
        std::u32string &row = rows_.back();
        if (row.size() < column_ + width)
            row.resize(column_ + width, U' ');
        row[column_] = character;
        if (width == 2)
            row[column_ + 1] = U'\0';
        column_ += width;
        widest_ = std::max(widest_, static_cast<int>(column_));
    }

    int columns_;
    size_t column_ = 0;
    int widest_ = 0;
    std::vector<std::u32string> rows_ = {{}};
};
