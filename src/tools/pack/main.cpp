// zavik-pack: a game and its images as one ZIP file, and back.
//   zavik-pack pack GAME.game [OUT.zip] [--all-images]
//   zavik-pack unpack FILE.zip [--into DIR] [--replace | --keep-both]
// Exit status: 0 done (a pack with missing images too, with a warning), 1 an
// archive refused or an unpack not done, 2 a bad command line or a file that
// cannot be read.

#include "pack/AppFolder.h"
#include "pack/Pack.h"
#include "pack/Unpack.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <cstdio>

namespace {

void print(FILE* stream, const QString& text) {
    std::fputs(text.toLocal8Bit().constData(), stream);
    std::fputc('\n', stream);
}

int usage(const QString& problem) {
    if (!problem.isEmpty())
        print(stderr, QStringLiteral("zavik-pack: ") + problem);
    print(stderr, QStringLiteral("usage: zavik-pack pack GAME.game [OUT.zip] [--all-images]\n"
                                 "       zavik-pack unpack FILE.zip [--into DIR] "
                                 "[--replace | --keep-both]"));
    return 2;
}

int packCommand(const QStringList& args) {
    QStringList plain;
    bool all = false;
    for (const QString& arg : args) {
        if (arg == QLatin1String("--all-images"))
            all = true;
        else if (arg.startsWith(QLatin1String("--")))
            return usage(QStringLiteral("unknown option %1").arg(arg));
        else
            plain.append(arg);
    }
    if (plain.isEmpty() || plain.size() > 2)
        return usage(QStringLiteral("pack takes a game file and at most one archive name"));
    const QFileInfo game(plain[0]);
    if (!game.isFile() || !game.isReadable()) {
        print(stderr, QStringLiteral("zavik-pack: %1: cannot read the game file")
                          .arg(QDir::toNativeSeparators(plain[0])));
        return 2;
    }
    // The double extension keeps every unzip tool's ".zip" and says what is inside.
    const QString out = plain.size() == 2
                            ? plain[1]
                            : game.absolutePath() + QLatin1Char('/') + game.completeBaseName() +
                                  QStringLiteral(".game.zip");
    const pack::PackResult result = pack::packGame(game.filePath(), out, all);
    if (!result.ok) {
        print(stderr, QStringLiteral("zavik-pack: ") + result.error);
        return 1;
    }
    for (const QString& name : result.packed)
        print(stdout, QStringLiteral("packed %1").arg(name));
    for (const QString& name : result.missing)
        print(stderr, QStringLiteral("zavik-pack: warning: %1: named by the game, not in its "
                                     "folder")
                          .arg(name));
    for (const QString& line : result.skipped)
        print(stderr, QStringLiteral("zavik-pack: warning: skipped %1").arg(line));
    print(stdout, QStringLiteral("%1: %2 files, %3 bytes%4")
                      .arg(QDir::toNativeSeparators(out))
                      .arg(result.packed.size())
                      .arg(result.bytes)
                      .arg(result.missing.isEmpty()
                               ? QString()
                               : QStringLiteral(", %1 images missing").arg(result.missing.size())));
    return 0;
}

int unpackCommand(const QStringList& args) {
    QString zip, into;
    pack::Choice onConflict = pack::Choice::Cancel;
    for (int i = 0; i < args.size(); ++i) {
        const QString& arg = args[i];
        if (arg == QLatin1String("--into")) {
            if (++i >= args.size())
                return usage(QStringLiteral("--into needs a folder"));
            into = args[i];
        } else if (arg == QLatin1String("--replace")) {
            onConflict = pack::Choice::Replace;
        } else if (arg == QLatin1String("--keep-both")) {
            onConflict = pack::Choice::KeepBoth;
        } else if (arg.startsWith(QLatin1String("--"))) {
            return usage(QStringLiteral("unknown option %1").arg(arg));
        } else if (zip.isEmpty()) {
            zip = arg;
        } else {
            return usage(QStringLiteral("unpack takes one archive"));
        }
    }
    if (zip.isEmpty())
        return usage(QStringLiteral("unpack needs an archive"));
    const QFileInfo file(zip);
    if (!file.isFile() || !file.isReadable()) {
        print(stderr, QStringLiteral("zavik-pack: %1: cannot read the archive")
                          .arg(QDir::toNativeSeparators(zip)));
        return 2;
    }
    if (into.isEmpty())
        into = pack::applicationFolder(QCoreApplication::applicationDirPath());
    if (!QFileInfo(into).isDir()) {
        print(stderr,
              QStringLiteral("zavik-pack: %1: no such folder").arg(QDir::toNativeSeparators(into)));
        return 2;
    }
    const pack::UnpackResult result =
        pack::unpackArchive(zip, into, [onConflict](const pack::Conflicts& conflicts) {
            if (onConflict == pack::Choice::Cancel)
                print(stderr,
                      QStringLiteral("zavik-pack: these differ from the files in the "
                                     "folder: %1; give --replace or --keep-both (as %2)")
                          .arg(conflicts.names.join(QStringLiteral(", ")), conflicts.keepBothGame));
            return onConflict;
        });
    if (result.status != pack::UnpackResult::Done) {
        print(stderr, QStringLiteral("zavik-pack: ") + result.error);
        if (result.status == pack::UnpackResult::Refused)
            print(stderr, QStringLiteral("zavik-pack: the archive was refused; nothing of it "
                                         "was kept"));
        return 1;
    }
    for (const QString& name : result.written)
        print(stdout, QStringLiteral("created %1").arg(name));
    for (const QString& name : result.unchanged)
        print(stdout, QStringLiteral("unchanged %1").arg(name));
    print(stdout, QStringLiteral("game: %1").arg(QDir::toNativeSeparators(result.gameFile)));
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QStringList args = QCoreApplication::arguments().mid(1);
    if (args.isEmpty())
        return usage({});
    const QString command = args.takeFirst();
    if (command == QLatin1String("pack"))
        return packCommand(args);
    if (command == QLatin1String("unpack"))
        return unpackCommand(args);
    return usage(QStringLiteral("unknown command %1").arg(command));
}
