#include "app/update/AppcastReader.h"

namespace {

const QString signatureName = QStringLiteral("vantorel:signature");

bool isKept(const QString &key)
{
    return key == AppcastItem::titleKey || key == AppcastItem::descriptionKey ||
           key == AppcastItem::dateKey || key == AppcastItem::releaseTypeKey ||
           key == AppcastItem::versionKey || key == AppcastItem::operatingSystemKey ||
           key == AppcastItem::minimumSystemKey;
}

} // namespace

std::optional<Appcast> AppcastReader::read()
{
    while (next())
        if (xml_.isStartElement())
            readRoot();
    if (xml_.hasError())
        return std::nullopt;
    return items_ ? Appcast(std::move(*items_)) : Appcast();
}

/// The next token; false at the end, after an error, and on what is refused.
bool AppcastReader::next()
{
    if (xml_.atEnd())
        return false;
    xml_.readNext();
    if (xml_.tokenType() == QXmlStreamReader::DTD)
        xml_.raiseError(QStringLiteral("a document type"));
    return !xml_.hasError() && xml_.tokenType() != QXmlStreamReader::EndDocument;
}

void AppcastReader::readRoot()
{
    if (xml_.qualifiedName() != QLatin1String("rss")) {
        xml_.raiseError(QStringLiteral("no feed"));
        return;
    }
    while (next() && !xml_.isEndElement()) {
        if (!xml_.isStartElement())
            continue;
        if (xml_.qualifiedName() == QLatin1String("channel"))
            readChannel();
        else
            skip();
    }
}

void AppcastReader::readChannel()
{
    if (!items_)
        items_.emplace();
    while (next() && !xml_.isEndElement()) {
        if (!xml_.isStartElement())
            continue;
        if (xml_.qualifiedName() == QLatin1String("item"))
            items_->push_back(readItem());
        else
            skip();
    }
}

AppcastItem AppcastReader::readItem()
{
    AppcastItem item;
    const QXmlStreamAttributes attributes = xml_.attributes();
    for (const QXmlStreamAttribute &attribute : attributes)
        if (const QString key = attribute.qualifiedName().toString(); isKept(key))
            item.properties.insert(key, bounded(key, attribute.value().toString()));
    while (next() && !xml_.isEndElement())
        if (xml_.isStartElement())
            readChild(item);
    return item;
}

/// The first of two of a name counts, an attribute before all.
void AppcastReader::readChild(AppcastItem &item)
{
    const QString key = xml_.qualifiedName().toString();
    if (isKept(key) && !item.properties.contains(key)) {
        const QString text = readText(key);
        item.properties.insert(key, text);
    } else if (key == QLatin1String("enclosure") && item.enclosure.url.isEmpty()) {
        item.enclosure = readEnclosure();
    } else {
        skip();
    }
}

AppcastItem::Enclosure AppcastReader::readEnclosure()
{
    const QXmlStreamAttributes attributes = xml_.attributes();
    const auto text = [&](const QString &name) {
        return bounded(name, attributes.value(name).toString());
    };
    AppcastItem::Enclosure enclosure;
    enclosure.url = QUrl(text(QStringLiteral("url")), QUrl::StrictMode);
    enclosure.length = text(QStringLiteral("length")).toLongLong();
    enclosure.type = text(QStringLiteral("type"));
    const auto signature = QByteArray::fromBase64Encoding(text(signatureName).toUtf8(),
                                                          QByteArray::AbortOnBase64DecodingErrors);
    if (signature)
        enclosure.signature = *signature;
    skip();
    return enclosure;
}

/// The text of the element and of those in it. Not QXmlStreamReader::readElementText(), which calls
/// itself at every level.
QString AppcastReader::readText(const QString &key)
{
    QString text;
    for (int depth = 1; depth > 0 && next();) {
        if (xml_.isStartElement())
            ++depth;
        else if (xml_.isEndElement())
            --depth;
        else if (xml_.isCharacters())
            text += xml_.text();
    }
    return bounded(key, text);
}

QString AppcastReader::bounded(const QString &key, const QString &text)
{
    QString trimmed = text.trimmed();
    if (key == AppcastItem::descriptionKey || key == AppcastItem::titleKey)
        trimmed.truncate(longestNotes);
    else if (trimmed.size() > longestText)
        xml_.raiseError(QStringLiteral("too long a text"));
    return trimmed;
}

void AppcastReader::skip()
{
    for (int depth = 1; depth > 0 && next();) {
        if (xml_.isStartElement())
            ++depth;
        else if (xml_.isEndElement())
            --depth;
    }
}
