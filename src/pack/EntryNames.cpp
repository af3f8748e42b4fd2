#include "pack/EntryNames.h"

#include <QStringConverter>
#include <QStringList>

namespace pack {

QString windowsRefusal(const QString& component) {
    if (component.isEmpty())
        return QStringLiteral("an empty name");
    if (component == QLatin1String(".") || component == QLatin1String(".."))
        return QStringLiteral("a name that points at a folder above");
    for (QChar c : component) {
        if (c.unicode() < 32)
            return QStringLiteral("a control character in the name");
        if (QStringLiteral(":*?\"<>|").contains(c))
            return QStringLiteral("the character %1, which Windows does not allow in a name")
                .arg(c);
    }
    const QChar last = component.back();
    if (last == QLatin1Char('.') || last == QLatin1Char(' '))
        return QStringLiteral("a name ending in a dot or a blank, which Windows drops");
    // A device name stays a device whatever extension follows it.
    const QString base = component.section(QLatin1Char('.'), 0, 0).trimmed().toUpper();
    static const QStringList devices = {QStringLiteral("CON"), QStringLiteral("PRN"),
                                        QStringLiteral("AUX"), QStringLiteral("NUL")};
    const bool numbered =
        base.size() == 4 &&
        (base.startsWith(QLatin1String("COM")) || base.startsWith(QLatin1String("LPT"))) &&
        base[3] >= QLatin1Char('1') && base[3] <= QLatin1Char('9');
    if (devices.contains(base) || numbered)
        return QStringLiteral("the device name %1, which Windows reserves").arg(base);
    return {};
}

bool parseEntryName(const QByteArray& raw, int maxBytes, EntryPath& out, QString& why) {
    out = {};
    if (raw.size() > maxBytes) {
        why = QStringLiteral("a name of %1 bytes, longer than %2").arg(raw.size()).arg(maxBytes);
        return false;
    }
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString name = utf8(raw);
    if (utf8.hasError() || raw.contains('\0')) {
        why = QStringLiteral("a name that is not valid UTF-8 text");
        return false;
    }
    if (name.contains(QLatin1Char('\\'))) {
        why = QStringLiteral("a backslash in the name, a folder separator on Windows");
        return false;
    }
    if (name.startsWith(QLatin1Char('/'))) {
        why = QStringLiteral("an absolute path");
        return false;
    }
    if (name.size() >= 2 && name[1] == QLatin1Char(':') && name[0].isLetter()) {
        why = QStringLiteral("a drive letter");
        return false;
    }
    QStringList parts = name.split(QLatin1Char('/'));
    const bool folderEntry = parts.size() == 2 && parts[1].isEmpty();
    if (folderEntry)
        parts.removeLast();
    for (const QString& part : parts) {
        if (part == QLatin1String("..")) {
            why = QStringLiteral("a \"..\" that leads out of the folder");
            return false;
        }
    }
    if (parts.size() > 2) {
        why = QStringLiteral("a folder inside the image folder; a game's images lie side by side");
        return false;
    }
    for (const QString& part : parts) {
        const QString refusal = windowsRefusal(part);
        if (!refusal.isEmpty()) {
            why = refusal;
            return false;
        }
    }
    if (parts.size() == 1 && !folderEntry) {
        out.file = parts[0];
    } else {
        out.folder = parts[0];
        out.file = folderEntry ? QString() : parts[1];
    }
    return true;
}

bool alreadyCompressed(const QString& name, const QByteArray& head) {
    static const QStringList packedKinds = {
        QStringLiteral("jpg"), QStringLiteral("jpeg"), QStringLiteral("gif"),
        QStringLiteral("png"), QStringLiteral("webp"), QStringLiteral("zip"),
        QStringLiteral("gz"),  QStringLiteral("bz2"),  QStringLiteral("xz"),
        QStringLiteral("7z"),  QStringLiteral("mp3"),  QStringLiteral("ogg")};
    if (packedKinds.contains(name.section(QLatin1Char('.'), -1).toLower()))
        return true;
    // A file's own first bytes beat its name: a JPEG called .bmp is still one.
    static const char* const magics[] = {"\xFF\xD8\xFF",
                                         "GIF8",
                                         "\x89PNG",
                                         "PK\x03\x04",
                                         "\x1F\x8B",
                                         "BZh",
                                         ("\xFD"
                                          "7zXZ"), // split: \xFD7 would read as one escape
                                         "7z\xBC\xAF"};
    for (const char* magic : magics)
        if (head.startsWith(magic))
            return true;
    return head.startsWith("RIFF") && head.mid(8, 4) == "WEBP";
}

QString foldedName(const QString& name) {
    return name.toCaseFolded();
}

} // namespace pack
