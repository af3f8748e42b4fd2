#include "check/GameChecker.h"

#include "check/CheckContext.h"
#include "game/Conversions.h"
#include "game/GameFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStringBuilder>

#include <algorithm>

#ifdef Q_OS_UNIX
#include <dirent.h>
#include <sys/stat.h>
#endif

namespace check {

namespace detail {

std::optional<qint64> wholeNumber(const QString& text) {
    static const QRegularExpression digits(QStringLiteral("^[0-9]{1,9}$"));
    const QString t = text.trimmed();
    if (!digits.match(t).hasMatch())
        return std::nullopt;
    return t.toLongLong();
}

QString quoted(const QString& text) {
    return QLatin1Char('"') + text + QLatin1Char('"');
}

QString Deck::words() const {
    if (common)
        return QStringLiteral("common deck ") + QString::number(number);
    return QStringLiteral("deck ") + QString::number(number) + QStringLiteral(" of player ") +
           QString::number(player);
}

Context::Context(const QString& gameFile, const QByteArray& bytes) : file(gameFile) {
    document.load(bytes);
    index.build(document);
}

QString Context::read(const QString& section, const QString& key) const {
    return document.read(section, key);
}

Place Context::place(Where where, const QString& section, const QString& key, int player, int deck,
                     int report) const {
    Place p;
    p.where = where;
    p.section = section;
    p.key = key;
    p.player = player;
    p.deck = deck;
    p.report = report;
    p.line = index.lineOf(section, key);
    return p;
}

Place Context::place(const Deck& deck, const QString& key) const {
    return place(deck.where(), deck.section, key, deck.player, deck.number);
}

bool Context::hasProperty(QStringView name) const {
    for (const QString& known : propertyNames) {
        if (known == name)
            return true;
    }
    return false;
}

void Context::add(Severity severity, const Place& where, const QString& message) {
    findings.push_back({severity, where, message});
}

ImageLookup Context::lookUpImage(const QString& name) {
    if (name.isEmpty() || !images.problem.isEmpty())
        return {};
    // The name may point into a line of the file: the map keeps the name on disk.
    if (const auto found = images.files.find(name); found != images.files.end()) {
        *found = true;
        return {ImageState::Found, found.key()};
    }
    const auto folded = images.byFoldedName.constFind(name.toLower());
    if (folded == images.byFoldedName.cend())
        return {ImageState::Missing, QString()};
    images.files[*folded] = true;
    return {ImageState::OtherCase, *folded};
}

void Context::reportImage(const ImageLookup& lookup, const QString& name, const Place& where,
                          const QString& whose) {
    if (lookup.state == ImageState::OtherCase)
        add(Severity::Warning, where,
            whose + QStringLiteral(" names ") + quoted(name) +
                QStringLiteral(", but the file is ") + quoted(lookup.onDisk) +
                QStringLiteral(": it is found on Windows, not where letter case counts"));
    else if (lookup.state == ImageState::Missing)
        add(Severity::Error, where,
            whose + QStringLiteral(" names ") + quoted(name) +
                QStringLiteral(", which is not in the directory ") + quoted(images.name));
}

void Context::checkImage(const QString& name, const Place& where, const QString& whose) {
    reportImage(lookUpImage(name), name, where, whose);
}

namespace {

// The names of the files in a folder. Entries that cannot be followed, such
// as a link that points at itself, are neither files nor folders and drop out.
QStringList fileNames(const QString& folder) {
    QStringList names;
#ifdef Q_OS_UNIX
    // Two thousand images: the kind of each entry comes with the listing, so
    // only links need a look of their own.
    const QByteArray native = QFile::encodeName(folder);
    DIR* dir = ::opendir(native.constData());
    if (!dir)
        return names;
    while (const dirent* entry = ::readdir(dir)) {
        bool file = entry->d_type == DT_REG;
        if (entry->d_type == DT_LNK || entry->d_type == DT_UNKNOWN) {
            struct stat st {};
            const QByteArray full = native + '/' + entry->d_name;
            file = ::stat(full.constData(), &st) == 0 && S_ISREG(st.st_mode);
        }
        if (file)
            names.append(QFile::decodeName(entry->d_name));
    }
    ::closedir(dir);
#else
    names = QDir(folder).entryList(QDir::Files | QDir::Hidden);
#endif
    return names;
}

// Whether a name ends in a suffix given in lower case, letter case aside. Two
// thousand names each ask several times, and Qt's comparison folds every
// character the long way; for ASCII, folding is plain lower case.
bool endsWithNoCase(const QString& name, QLatin1String suffix) {
    const qsizetype n = suffix.size();
    if (name.size() < n)
        return false;
    const QChar* tail = name.constData() + name.size() - n;
    for (qsizetype i = 0; i < n; ++i) {
        char16_t c = tail[i].unicode();
        if (c >= 0x80)
            return name.endsWith(suffix, Qt::CaseInsensitive);
        if (c >= u'A' && c <= u'Z')
            c = static_cast<char16_t>(c - u'A' + u'a');
        if (c != suffix[i].unicode())
            return false;
    }
    return true;
}

bool isImageName(const QString& name) {
    return endsWithNoCase(name, QLatin1String(".bmp")) ||
           endsWithNoCase(name, QLatin1String(".jpg")) ||
           endsWithNoCase(name, QLatin1String(".gif"));
}

// Pictures that drawing programs save and that a designer may expect among
// the cards; the wizard lists none of them.
bool isOtherPicture(const QString& name) {
    static const char* const kinds[] = {"png", "jpeg", "jpe", "tif", "tiff", "webp",
                                        "svg", "ico", "tga", "pcx", "psd", "xcf"};
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    if (dot < 0 || name.size() - dot > 5)
        return false;
    const QString kind = name.mid(dot + 1).toLower();
    for (const char* known : kinds) {
        if (kind == QLatin1String(known))
            return true;
    }
    return false;
}

void listImageFolder(Context& c, const QString& folderName) {
    ImageFolder& images = c.images;
    images.name = folderName;
    const QString path = QFileInfo(c.file).absolutePath() + QLatin1Char('/') + folderName;
    const QFileInfo info(path);
    if (!info.exists()) {
        images.problem = QStringLiteral("does not exist");
        return;
    }
    if (!info.isDir()) {
        images.problem = QStringLiteral("is a file, not a directory");
        return;
    }
    if (!info.isReadable() || !info.isExecutable()) {
        images.problem = QStringLiteral("cannot be read");
        return;
    }
    const QStringList names = fileNames(path);
    images.files.reserve(names.size());
    images.byFoldedName.reserve(names.size());
    for (const QString& name : names) {
        images.files.insert(name, false);
        images.byFoldedName.insert(name.toLower(), name);
        if (isImageName(name))
            images.images.append(name);
        else if (isOtherPicture(name))
            images.unlisted.append(name);
    }
    std::sort(images.images.begin(), images.images.end());
    std::sort(images.unlisted.begin(), images.unlisted.end());
}

// A count that must lie between low and high; gives the value in use.
int checkCount(Context& c, const Place& where, const QString& what, int low, int high) {
    const QString text = c.read(where.section, where.key);
    const auto n = wholeNumber(text);
    if (!n || *n < low || *n > high) {
        const QString shown = text.isEmpty() ? QStringLiteral("empty") : quoted(text);
        c.add(Severity::Error, where,
              what + QStringLiteral(" is ") + shown + QStringLiteral(", not a whole number from ") +
                  QString::number(low) + QStringLiteral(" to ") + QString::number(high));
    }
    return std::clamp<int>(conv::CInt(conv::Val(text)), 0, high);
}

} // namespace

void checkGameSection(Context& c) {
    const QString gameSection = game::section::game();
    c.players = checkCount(c, c.place(Where::Game, gameSection, QStringLiteral("players")),
                           QStringLiteral("The number of players"), 1, 6);
    c.commonDecks = checkCount(c, c.place(Where::Game, gameSection, QStringLiteral("common_decks")),
                               QStringLiteral("The number of common decks"), 0, 6);
    const QString directory = c.read(gameSection, QStringLiteral("directory"));
    const Place directoryPlace = c.place(Where::Game, gameSection, QStringLiteral("directory"));
    if (directory.isEmpty()) {
        c.images.problem = QStringLiteral("is not set");
        c.add(Severity::Error, directoryPlace,
              QStringLiteral("No image directory is set, so no image of the game can be found"));
    } else {
        listImageFolder(c, directory);
        if (!c.images.problem.isEmpty())
            c.add(Severity::Error, directoryPlace,
                  QStringLiteral("The image directory ") + quoted(directory) + QLatin1Char(' ') +
                      c.images.problem);
    }
    c.checkImage(c.read(gameSection, QStringLiteral("desktop")),
                 c.place(Where::Game, gameSection, QStringLiteral("desktop")),
                 QStringLiteral("The desktop image"));
}

void checkPlayers(Context& c) {
    for (int p = 1; p <= c.players; ++p) {
        const QString section = game::section::player(p);
        const QString who = section;
        if (c.read(section, QStringLiteral("name")).isEmpty()) {
            Place where = c.place(Where::Player, section, QStringLiteral("name"), p);
            if (where.line == 0) // no section yet: the count put the player in use
                where.line = c.index.lineOf(game::section::game(), QStringLiteral("players"));
            c.add(Severity::Warning, where, who + QStringLiteral(" has no name"));
        }
        const QString decks = c.read(section, QStringLiteral("decks"));
        const auto n = wholeNumber(decks);
        if (!decks.trimmed().isEmpty() && (!n || *n > 6))
            c.add(Severity::Error, c.place(Where::Player, section, QStringLiteral("decks"), p),
                  QStringLiteral("The number of decks of player ") + QString::number(p) +
                      QStringLiteral(" is ") + quoted(decks) +
                      QStringLiteral(", not a whole number from 0 to 6"));
        c.playerDecks[p] = std::clamp<int>(conv::CInt(conv::Val(decks)), 0, 6);
    }
}

void checkUnusedImages(Context& c) {
    if (!c.images.problem.isEmpty())
        return;
    if (const qsizetype n = c.images.unlisted.size(); n > 0)
        c.add(Severity::Note, c.place(Where::Game, game::section::game(), QStringLiteral("directory")),
              QStringLiteral("The directory ") + quoted(c.images.name) + QStringLiteral(" holds ") +
                  (n == 1 ? QStringLiteral("a picture") : QString::number(n) + QStringLiteral(" pictures")) +
                  QStringLiteral(" that the wizard lists nowhere, as it lists only *.bmp, *.jpg "
                                 "and *.gif files: ") +
                  QStringList(c.images.unlisted.mid(0, 10)).join(QStringLiteral(", ")) +
                  (n > 10 ? QStringLiteral(" and ") + QString::number(n - 10) + QStringLiteral(" more")
                          : QString()));
    // Thousands of images may go unused: the place is the same for all.
    const Place directory =
        c.place(Where::Game, game::section::game(), QStringLiteral("directory"));
    for (const QString& image : std::as_const(c.images.images)) {
        if (!c.images.files.value(image))
            c.add(
                Severity::Warning,
                directory,
                // Built in one piece (%): thousands of images may go unused.
                QLatin1String("The image \"") % image %
                    QLatin1String("\" of the directory is used by no deck and not as the desktop"));
    }
}

} // namespace detail

GameReport checkGame(const QString& gameFile) {
    GameReport report;
    report.file = gameFile;
    const QFileInfo info(gameFile);
    if (info.isDir()) {
        report.unreadable = QStringLiteral("it is a directory");
        return report;
    }
    QFile file(gameFile);
    if (!file.open(QIODevice::ReadOnly)) {
        report.unreadable = file.errorString();
        return report;
    }
    const QByteArray bytes = file.readAll();
    file.close();

    detail::Context context(gameFile, bytes);
    detail::checkGameSection(context);
    detail::checkPlayers(context);
    detail::checkPropertyLists(context);
    detail::checkDecks(context);
    detail::checkReports(context);
    detail::checkUnusedImages(context);
    detail::checkLeftovers(context);
    detail::checkLongValues(context);
    report.findings = std::move(context.findings);
    std::stable_sort(
        report.findings.begin(), report.findings.end(),
        [](const Finding& a, const Finding& b) { return a.place.line < b.place.line; });
    return report;
}

} // namespace check
