// The file of the preferences, damaged in any way: it is read without harm, a change is kept, and
// what was not changed is still there, in the file or in the one that was moved aside.

#include "Fuzzer.h"

#include "platform/UserDefaults.h"

#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <QSettings>

#include <algorithm>

namespace {

using Fuzzer::require;

const QVariantMap &fallbacks()
{
    static const QVariantMap table{{QStringLiteral("WipeMethod"), 4},
                                   {QStringLiteral("AutoExit"), false},
                                   {QStringLiteral("checkForUpdates"), true},
                                   {QStringLiteral("logInterval"), 0.5},
                                   {QStringLiteral("colorProperties"), QVariantMap()}};
    return table;
}

const QString &probe()
{
    static const QString key = QStringLiteral("AppBuildNr");
    return key;
}

/// A configuration folder that no other input has had: QSettings remembers files by their names.
class Place
{
  public:
    Place() : folder_(QStringLiteral("settings-%1").arg(++count))
    {
        QDir().mkpath(folder_ + QLatin1String("/Vantorel"));
        use();
    }
    ~Place() { QDir(folder_).removeRecursively(); }
    Q_DISABLE_COPY_MOVE(Place)

    [[nodiscard]] QString file() const { return folder_ + QLatin1String("/Vantorel/Vantorel.ini"); }

    /// The same files under a name that nobody remembers.
    void move()
    {
        const QString before = std::exchange(folder_, folder_ + QLatin1String("-again"));
        require(QDir().rename(before, folder_), "the folder is renamed");
        use();
    }

    void write(const QByteArray &bytes) const
    {
        QFile file(this->file());
        require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(),
                "the file is written");
    }

    [[nodiscard]] QByteArray bytesOf(const QString &path) const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

  private:
    void use() const { QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder_); }

    static inline int count = 0;
    QString folder_; ///< below the working folder
};

QStringList readAll(const UserDefaults &defaults)
{
    QStringList texts;
    for (auto key = fallbacks().keyBegin(); key != fallbacks().keyEnd(); ++key) {
        const QString text = defaults.text(*key);
        texts.append(text);
        texts.append(text.isValidUtf16() ? QString::number(defaults.integer(*key)) : text);
        require(defaults.boolean(*key) == (defaults.integer(*key) != 0), "a switch is a number");
    }
    return texts;
}

/// Half of a surrogate pair, which an escape in the file can say, is no text and cannot be written.
bool isKept(const QString &before, const QString &after)
{
    return before == after || !before.isValidUtf16();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int * /*count*/, char *** /*arguments*/)
{
    // A line for every damaged file would hide what libFuzzer says.
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes = Fuzzer::bytesOf(data, size);
    Place place;
    place.write(bytes);
    QStringList before;
    {
        UserDefaults defaults(fallbacks());
        before = readAll(defaults);
        require(place.bytesOf(place.file()) == bytes, "reading changes nothing");
        defaults.setValue(probe(), 1234);
        defaults.synchronize();
    }
    const QString aside = place.file() + QLatin1String(".damaged");
    require(!QFile::exists(aside) || place.bytesOf(aside) == bytes, "what is moved aside is whole");
    place.move();
    const UserDefaults defaults(fallbacks());
    require(defaults.integer(probe()) == 1234, "a change is kept");
    const QStringList after = readAll(defaults);
    require(std::equal(before.cbegin(), before.cend(), after.cbegin(), after.cend(), isKept),
            "what was not changed is as it was");
    return 0;
}
