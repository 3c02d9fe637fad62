#include "support/LogCaller.h"

#include <QStringList>

namespace {

/// The qualified name in "static int Class<T>::operation(int) const [with T = char]": what stands
/// between the return type and the first bracket. A lambda's is that of the function around it.
QString qualifiedName(const QString &function)
{
    int depth = 0; // of template brackets
    qsizetype start = 0;
    qsizetype at = 0;
    for (; at < function.size(); ++at) {
        const QChar character = function.at(at);
        if (character == QLatin1Char('<'))
            ++depth;
        else if (character == QLatin1Char('>'))
            --depth;
        else if (depth == 0 && character == QLatin1Char('('))
            break;
        else if (depth == 0 && character == QLatin1Char(' '))
            start = at + 1;
    }
    QString name = function.mid(start, at - start);
    while (name.startsWith(QLatin1Char('*')) || name.startsWith(QLatin1Char('&')))
        name.remove(0, 1);
    return name;
}

/// Its components; "::" between template brackets parts nothing, and those brackets go.
QStringList componentsOf(const QString &name)
{
    QString plain;
    int depth = 0;
    for (const QChar character : name) {
        depth += character == QLatin1Char('<') ? 1 : 0;
        if (depth == 0)
            plain += character;
        depth -= character == QLatin1Char('>') ? 1 : 0;
    }
    return plain.split(QStringLiteral("::"), Qt::SkipEmptyParts);
}

QString withoutAnonymousNamespaces(QString function)
{
    return function.remove(QStringLiteral("{anonymous}::"))
        .remove(QStringLiteral("(anonymous namespace)::"));
}

QString operationOf(const QString &function)
{
    const QStringList components =
        componentsOf(qualifiedName(withoutAnonymousNamespaces(function)));
    if (components.size() < 2)
        return components.join(QString());
    return QStringLiteral("-[%1 %2]").arg(components.at(components.size() - 2), components.last());
}

bool isSeparator(QChar character)
{
    return QLatin1String(" -[]+?.,").contains(character);
}

QStringList piecesOf(const QString &frame)
{
    QStringList pieces = {QString()};
    for (const QChar character : frame) {
        if (isSeparator(character))
            pieces.append(QString());
        else
            pieces.last() += character;
    }
    pieces.removeAll(QString());
    return pieces;
}

} // namespace

QString LogCaller::frameText(const char *function, unsigned line)
{
    // The compiler tells no address.
    return QStringLiteral("1   vantorel   0x0 %1 + %2")
        .arg(operationOf(QString::fromUtf8(function)))
        .arg(line);
}

QString LogCaller::ofFrame(const QString &frame)
{
    constexpr qsizetype fewestPieces = 5;
    const QStringList pieces = piecesOf(frame);
    if (pieces.size() < fewestPieces)
        return {};
    return QStringLiteral("[%1 %2]").arg(pieces.at(3), pieces.at(4));
}
