// Feeds arbitrary bytes to the profile store as a file, writes a few values
// chosen by the input, flushes, and checks what must hold for any file: a
// written value reads back, the disk says what memory said, and a change
// never disturbs bytes it does not own.
#include "store/AnsiCodec.h"
#include "store/ProfileDocument.h"
#include "store/ProfileStore.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

const std::array<QString, 9> kSections = {
    "GAME", "game", "Player 1", "a]b", "", " [x", "DECK 1 PLAYER 2", "New 1", "NEW 2"};
const std::array<QString, 7> kKeys = {"name", "NAME", "card1", "", " k ", "a b", "description"};

QString valueFor(unsigned char pick) {
    switch (pick % 10) {
    case 0:
        return {};
    case 1:
        return QStringLiteral("  lead and trail  ");
    case 2:
        return QString(300, QChar(u'a' + pick % 26));
    case 3:
        return QStringLiteral("first\r\nsecond");
    case 4:
        return QStringLiteral("\"quoted\"");
    case 5:
        return QString::fromUtf8("caf\u00e9 \u20ac \u03a9");
    case 6:
        return QStringLiteral("nul") + QChar(0) + QStringLiteral("after");
    case 7:
        return QStringLiteral("x\n[GAME]\nname=sneaky");
    case 8:
        return QStringLiteral("(x2)card.bmp,,Value=3|Colour=red");
    default:
        return QString::number(pick);
    }
}

// What a reader of the file gets back for a value as written.
QString readBack(const QString& written, store::detail::FileEncoding encoding) {
    QString v = written;
    qsizetype lead = 0;
    const auto blank = [](QChar c) {
        return c.unicode() < 0x80 && store::detail::isProfileBlank(c.toLatin1());
    };
    const qsizetype nul = v.indexOf(QChar(0));
    if (nul >= 0)
        v.truncate(nul);
    while (lead < v.size() && blank(v[lead]))
        ++lead;
    v = v.mid(lead);
    for (QChar stop : {QChar(u'\r'), QChar(u'\n'), QChar(0)}) {
        const qsizetype at = v.indexOf(stop);
        if (at >= 0)
            v.truncate(at);
    }
    while (!v.isEmpty() && blank(v.back()))
        v.chop(1);
    const QByteArray bytes = store::detail::encodeText(v, encoding);
    v = store::detail::decodeText(bytes.constData(), bytes.size(), encoding);
    if (v.size() >= 2 && (v.front() == u'"' || v.front() == u'\'') && v.back() == v.front())
        v = v.mid(1, v.size() - 2);
    return v.left(254);
}

[[noreturn]] void fail(const char* what, const QString& detail = {}) {
    std::fprintf(stderr, "invariant broken: %s %s\n", what, qPrintable(detail));
    std::abort();
}

QByteArray bytesOf(const QString& file) {
    QFile f(file);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static QTemporaryDir dir(QDir("/dev/shm").exists() ? "/dev/shm/zavik-fuzz-XXXXXX"
                                                       : QDir::tempPath() + "/zavik-fuzz-XXXXXX");
    static const QString file = dir.filePath("fuzz.game");
    static bool handlerSet = false;
    static bool refusalExpected = false;
    if (!handlerSet) {
        store::SetProfileWriteErrorHandler([](const QString& path, const QString& reason) {
            if (!refusalExpected)
                fail("write refused", path + ": " + reason);
        });
        handlerSet = true;
    }
    if (size == 0)
        return 0;

    const std::size_t ops = std::min<std::size_t>(data[0] % 6, (size - 1) / 3);
    const std::size_t fileSize = size - 1 - ops * 3;
    const QByteArray original(reinterpret_cast<const char*>(data + 1),
                              static_cast<qsizetype>(fileSize));
    const uint8_t* opBytes = data + 1 + fileSize;
    {
        QFile f(file);
        if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
            f.write(original) != original.size())
            fail("cannot set up the file");
    }
    store::DropProfileCache();
    store::detail::ProfileDocument parsed;
    parsed.load(original);
    const auto encoding = parsed.encoding();
    if (parsed.isBroken()) {
        // Text that cannot go back as it came: every write is refused and
        // the file stays as it is.
        refusalExpected = true;
        const int accepted = store::WriteProfileValue("GAME", "name", "x", file);
        store::FlushProfiles();
        refusalExpected = false;
        if (accepted != 0 || bytesOf(file) != original)
            fail("a broken file was written");
        return 0;
    }

    // Reads of every name before any write.
    bool onlyNewSections = !original.toLower().contains("new ");
    for (std::size_t i = 0; i < ops; ++i) {
        const QString& section = kSections[opBytes[3 * i] % kSections.size()];
        const QString& key = kKeys[opBytes[3 * i + 1] % kKeys.size()];
        const QString value = valueFor(opBytes[3 * i + 2]);
        onlyNewSections = onlyNewSections && section.startsWith(u'N');
        if (store::WriteProfileValue(section, key, value, file) == 0)
            fail("write refused");
        const QString got = store::ReadProfileValue(section, key, file);
        if (got != readBack(value, encoding))
            fail("value does not read back", section + "/" + key + ": " + got);
    }

    std::vector<QString> before;
    for (const QString& section : kSections) {
        for (const QString& key : kKeys)
            before.push_back(store::ReadProfileValue(section, key, file));
    }
    store::FlushProfiles();
    store::DropProfileCache();
    std::size_t at = 0;
    for (const QString& section : kSections) {
        for (const QString& key : kKeys) {
            if (store::ReadProfileValue(section, key, file) != before[at++])
                fail("the file disagrees with what was read before the flush", section + "/" + key);
        }
    }

    const QByteArray after = bytesOf(file);
    if (ops == 0 && after != original)
        fail("a file without writes changed");
    if (onlyNewSections && !after.startsWith(original))
        fail("appending a section disturbed the bytes before it");
    return 0;
}
