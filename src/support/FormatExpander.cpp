#include "support/FormatExpander.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace {

constexpr int longestField = 4096; ///< characters; nobody means a wider one

struct Directive
{
    QString flags;
    int width = 0;
    int precision = -1; ///< none
    char conversion = 0;
};

bool isDigit(QChar character)
{
    return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

QString padded(const QString &text, const Directive &directive)
{
    const QString shown = directive.precision < 0 ? text : text.left(directive.precision);
    const bool isLeft = directive.flags.contains(QLatin1Char('-'));
    return isLeft ? shown.leftJustified(directive.width) : shown.rightJustified(directive.width);
}

/// The directive as the C library's format, for a number of 64 bits.
QByteArray integerFormat(const Directive &directive)
{
    QByteArray format = '%' + directive.flags.toLatin1();
    if (directive.width > 0)
        format += QByteArray::number(directive.width);
    if (directive.precision >= 0)
        format += '.' + QByteArray::number(directive.precision);
    return format + "ll" + directive.conversion;
}

/// Rounded from the exact value, as the C library does and Qt does not.
QString digitsOf(double magnitude, const Directive &directive)
{
    constexpr int mostDigits = std::numeric_limits<double>::max_exponent10 + 1;
    std::array<char, std::size_t(longestField + mostDigits + 8)> buffer{};
    const char kind = static_cast<char>(directive.conversion | 0x20); // lower case
    const std::chars_format format = kind == 'f'   ? std::chars_format::fixed
                                     : kind == 'e' ? std::chars_format::scientific
                                                   : std::chars_format::general;
    const int precision = directive.precision < 0 ? 6 : directive.precision;
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude, format, precision);
    const QString digits = QString::fromLatin1(buffer.data(), end.ptr - buffer.data());
    return kind == directive.conversion ? digits : digits.toUpper();
}

QString numberText(double number, const Directive &directive)
{
    const bool isPlus = directive.flags.contains(QLatin1Char('+'));
    const bool isBlank = directive.flags.contains(QLatin1Char(' '));
    const QString sign = QLatin1String(std::signbit(number) ? "-"
                                       : isPlus             ? "+"
                                       : isBlank            ? " "
                                                            : "");
    const QString digits = digitsOf(std::abs(number), directive);
    const bool isLeft = directive.flags.contains(QLatin1Char('-'));
    if (!isLeft && directive.flags.contains(QLatin1Char('0')) && std::isfinite(number))
        return sign + digits.rightJustified(directive.width - sign.size(), QLatin1Char('0'));
    const QString text = sign + digits;
    return isLeft ? text.leftJustified(directive.width) : text.rightJustified(directive.width);
}

class Expander
{
  public:
    Expander(const QString &format, const std::vector<FormatArgument> &arguments)
        : format_(format), arguments_(arguments)
    {
    }

    FormatExpander::Expansion run()
    {
        while (problem_.isEmpty() && at_ < format_.size()) {
            const QChar character = format_.at(at_++);
            if (character == QLatin1Char('%'))
                expandDirective();
            else
                text_ += character;
        }
        if (!problem_.isEmpty())
            return {{}, QStringLiteral("%1: \"%2\"").arg(problem_, format_)};
        return {text_, {}};
    }

  private:
    [[nodiscard]] QChar current() const { return at_ < format_.size() ? format_.at(at_) : QChar(); }
    bool take(char character)
    {
        const bool isThere = current() == QLatin1Char(character);
        at_ += isThere ? 1 : 0;
        return isThere;
    }
    void fail(const char *problem)
    {
        if (problem_.isEmpty())
            problem_ = QLatin1String(problem);
    }

    int takeNumber()
    {
        int number = 0;
        while (isDigit(current()))
            number = std::min(number * 10 + format_.at(at_++).digitValue(), longestField + 1);
        if (number > longestField)
            fail("a field is too wide");
        return number;
    }

    /// "2$": which argument is meant.
    void takePosition()
    {
        const qsizetype start = at_;
        const int number = takeNumber();
        if (number > 0 && take('$'))
            next_ = std::size_t(number) - 1;
        else
            at_ = start;
    }

    const FormatArgument *takeArgument()
    {
        if (next_ < arguments_.size())
            return &arguments_[next_++];
        fail("an argument is missing");
        return nullptr;
    }

    int takeField()
    {
        if (!take('*'))
            return takeNumber();
        const FormatArgument *argument = takeArgument();
        const FormatArgument::Integer *integer = argument ? argument->asInteger() : nullptr;
        if (!integer || integer->value < -longestField || integer->value > longestField) {
            fail("a width is no number");
            return 0;
        }
        return static_cast<int>(integer->value);
    }

    void expandDirective()
    {
        takePosition();
        Directive directive;
        while (at_ < format_.size() && QLatin1String("-+ #0").contains(current()))
            directive.flags += format_.at(at_++);
        directive.width = takeField();
        if (directive.width < 0) {
            directive.flags += QLatin1Char('-');
            directive.width = -directive.width;
        }
        if (take('.'))
            directive.precision = std::max(takeField(), -1);
        while (at_ < format_.size() && QLatin1String("hlqjztL").contains(current()))
            ++at_;
        directive.conversion = current().toLatin1();
        if (at_ < format_.size())
            ++at_;
        expand(directive);
    }

    void expand(const Directive &directive)
    {
        switch (directive.conversion) {
        case '%':
            text_ += QLatin1Char('%');
            break;
        case '@':
        case 's':
            expandText(directive);
            break;
        case 'c':
            expandCharacter(directive);
            break;
        case 'd':
        case 'i':
        case 'u':
        case 'x':
        case 'X':
        case 'o':
            expandInteger(directive);
            break;
        case 'f':
        case 'F':
        case 'e':
        case 'E':
        case 'g':
        case 'G':
            expandDouble(directive);
            break;
        default:
            fail("a directive is not known");
        }
    }

    void expandText(const Directive &directive)
    {
        const FormatArgument *argument = takeArgument();
        if (argument && directive.conversion == 's' && !argument->isText())
            fail("an argument is no text");
        else if (argument)
            text_ += padded(argument->description(), directive);
    }

    void expandCharacter(const Directive &directive)
    {
        const FormatArgument *argument = takeArgument();
        if (argument && !argument->asInteger())
            fail("an argument is no character");
        else if (argument)
            text_ += padded(QString(QChar(static_cast<char16_t>(argument->asInteger()->bits))),
                            directive);
    }

    void expandInteger(const Directive &directive)
    {
        const FormatArgument *argument = takeArgument();
        const FormatArgument::Integer *integer = argument ? argument->asInteger() : nullptr;
        if (!integer) {
            fail("an argument is no whole number");
            return;
        }
        Directive shown = directive;
        const bool isSigned = shown.conversion == 'd' || shown.conversion == 'i';
        if (isSigned && !integer->isSigned)
            shown.conversion = 'u';
        const QByteArray format = integerFormat(shown);
        text_ += isSigned && integer->isSigned
                     ? QString::asprintf(format.constData(), qlonglong(integer->value))
                     : QString::asprintf(format.constData(), qulonglong(integer->bits));
    }

    void expandDouble(const Directive &directive)
    {
        const FormatArgument *argument = takeArgument();
        const std::optional<double> number = argument ? argument->asDouble() : std::nullopt;
        if (!number)
            fail("an argument is no number");
        else
            text_ += numberText(*number, directive);
    }

    const QString &format_;
    const std::vector<FormatArgument> &arguments_;
    qsizetype at_ = 0;
    std::size_t next_ = 0;
    QString text_;
    QString problem_;
};

} // namespace

std::optional<double> FormatArgument::asDouble() const
{
    if (const auto *number = std::get_if<double>(&number_))
        return *number;
    if (const Integer *integer = asInteger())
        return integer->isSigned ? static_cast<double>(integer->value)
                                 : static_cast<double>(integer->bits);
    return std::nullopt;
}

FormatExpander::Expansion FormatExpander::expand(const QString &format,
                                                 const std::vector<FormatArgument> &arguments)
{
    return Expander(format, arguments).run();
}
