// zavik-compat: runs the same scripts of profile calls through the store and,
// under Wine, through the Windows functions, and compares what they give.
// A case is the same when every read and every write result agrees, both
// files keep one encoding mark, and the Windows functions read the two final
// files alike. Bytes that the store keeps where Windows rewrites the whole
// file (line ends, blank lines, blanks) do not count: no reader sees them.
#include "tools/compat/CompatCase.h"

#include "store/AnsiCodec.h"
#include "store/ProfileDocument.h"
#include "store/ProfileStore.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QMap>
#include <QProcess>
#include <QTextStream>

#include <algorithm>
#include <cstdio>

namespace {

using compat::Call;
using compat::Case;
using store::detail::decodeText;
using store::detail::encodeText;
using store::detail::FileEncoding;

struct Options {
    QString exe;
    QString wine = QStringLiteral("wine64");
    QString work;
    quint32 seed = 1;
    int cases = 200;
};

QByteArray hex(const QByteArray& bytes) {
    return bytes.isEmpty() ? QByteArray("-") : bytes.toHex();
}

QByteArray windowsPath(const QString& path) {
    return "Z:" + QDir::toNativeSeparators(QDir(path).absolutePath()).replace('/', '\\').toLatin1();
}

QString markOf(const QString& file) {
    QFile f(file);
    if (!f.open(QIODevice::ReadOnly))
        return QStringLiteral("no file");
    const QByteArray head = f.read(3);
    if (head.startsWith("\xEF\xBB\xBF"))
        return QStringLiteral("UTF-8");
    if (head.startsWith("\xFF\xFE"))
        return QStringLiteral("UTF-16LE");
    if (head.startsWith("\xFE\xFF"))
        return QStringLiteral("UTF-16BE");
    return QStringLiteral("single-byte");
}

// The entries of the README's list of deliberate differences that show only
// once Windows has rewritten a file, given what the file held before: in how
// it reads its rewrite. Until the first write, every answer must agree.
QString rewriteDifference(const std::optional<QByteArray>& before) {
    if (!before)
        return {};
    QByteArray text = *before;
    if (text.startsWith("\xEF\xBB\xBF")) {
        text.remove(0, 3);
        if (QString::fromUtf8(text).toUtf8() != text)
            return QStringLiteral("bytes that are no UTF-8");
    }
    if (text.startsWith("\xFF\xFE") || text.startsWith("\xFE\xFF")) {
        const bool le = text.startsWith("\xFF\xFE");
        QString units;
        for (qsizetype i = 2; i + 1 < text.size(); i += 2)
            units.append(QChar(le ? (uchar(text[i + 1]) << 8 | uchar(text[i]))
                                  : (uchar(text[i]) << 8 | uchar(text[i + 1]))));
        text = units.toUtf8();
    }
    if (text.contains('\0'))
        return QStringLiteral("bytes after a NUL");
    const auto blanksOnly = [](const QByteArray& t) {
        return std::all_of(t.begin(), t.end(), store::detail::isProfileBlank);
    };
    for (const QByteArray& line : text.replace('\r', '\n').split('\n')) {
        const qsizetype open = line.indexOf('[');
        const qsizetype close = line.lastIndexOf(']');
        if (open >= 0 && close > open && blanksOnly(line.left(open)) &&
            blanksOnly(line.mid(open + 1, close - open - 1)))
            return QStringLiteral("a header with no name");
    }
    return {};
}

// A read of a Unicode file where the store's answer has "?" for characters
// beyond the code page and the Windows function a look-alike letter.
bool differsByBestFit(const QByteArray& windows, const QByteArray& store) {
    if (windows.size() != store.size() || !windows.startsWith("R "))
        return false;
    const QByteArray w = QByteArray::fromHex(windows.split(' ').value(2));
    const QByteArray s = QByteArray::fromHex(store.split(' ').value(2));
    if (w.size() != s.size())
        return false;
    for (qsizetype i = 0; i < w.size(); ++i) {
        if (w[i] != s[i] && s[i] != '?')
            return false;
    }
    return true;
}

QString ansi(const QByteArray& bytes) {
    return decodeText(bytes.constData(), bytes.size(), FileEncoding::Ansi);
}

// What the store answers, in the lines the Windows program prints.
std::vector<QByteArray> runStore(const Case& c, const QString& file) {
    static int failures = 0;
    store::SetProfileWriteErrorHandler([](const QString&, const QString&) { ++failures; });
    store::DropProfileCache();
    std::vector<QByteArray> answers;
    for (const Call& call : c.calls) {
        if (call.kind == Call::Read) {
            // As the A function hands it over: one byte for every 16-bit unit.
            QByteArray value;
            for (QChar unit : store::ReadProfileValue(ansi(call.section), ansi(call.key), file))
                value += encodeText(QString(unit), FileEncoding::Ansi);
            answers.push_back("R " + QByteArray::number(value.size()) + ' ' + hex(value));
        } else {
            const int before = failures;
            const int accepted = store::WriteProfileValue(ansi(call.section), ansi(call.key),
                                                            ansi(call.value), file);
            store::FlushProfiles();
            answers.push_back(accepted != 0 && failures == before ? "W 1" : "W 0");
        }
    }
    return answers;
}

struct WineRun {
    QHash<int, std::vector<QByteArray>> answers;
    QHash<QByteArray, QByteArray> dumps; // Windows path -> its sections
};

std::optional<WineRun> runWine(const Options& options, const QByteArray& script) {
    QProcess wine;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("WINEDEBUG", "-all");
    env.insert("WINEDLLOVERRIDES", "mscoree,mshtml=");
    if (!env.contains("WINEPREFIX"))
        env.insert("WINEPREFIX", QDir(options.work).absoluteFilePath("prefix"));
    wine.setProcessEnvironment(env);
    wine.start(options.wine, {options.exe});
    if (!wine.waitForStarted(60000)) {
        std::fprintf(stderr, "cannot start %s\n", qPrintable(options.wine));
        return std::nullopt;
    }
    wine.write(script);
    wine.closeWriteChannel();
    if (!wine.waitForFinished(600000) || wine.exitCode() != 0) {
        std::fprintf(stderr, "%s did not finish: %s\n", qPrintable(options.wine),
                     wine.readAllStandardError().constData());
        return std::nullopt;
    }
    WineRun run;
    int current = -1;
    QByteArray dumping;
    for (const QByteArray& raw : wine.readAllStandardOutput().split('\n')) {
        const QByteArray line = raw.trimmed();
        if (line.startsWith("C ")) {
            current = QByteArray::fromHex(line.mid(2)).split('c').last().split('.').first().toInt();
            dumping.clear();
        } else if (line.startsWith("R ") || line.startsWith("W ")) {
            run.answers[current].push_back(line);
        } else if (line.startsWith("D ")) {
            dumping = QByteArray::fromHex(line.mid(2));
            run.dumps[dumping];
        } else if (line.startsWith("S ") && !dumping.isEmpty()) {
            run.dumps[dumping] += line + '\n';
        }
    }
    return run;
}

void describe(QTextStream& out, const Case& c, const std::vector<QByteArray>& wine,
              const std::vector<QByteArray>& store, const QByteArray& wineDump,
              const QByteArray& storeDump) {
    out << "  before: " << (c.before ? hex(*c.before) : QByteArray("(no file)")) << '\n';
    for (std::size_t i = 0; i < c.calls.size(); ++i) {
        const Call& call = c.calls[i];
        out << "  " << (call.kind == Call::Read ? "read " : "write ") << hex(call.section) << ' '
            << hex(call.key);
        if (call.kind == Call::Write)
            out << ' ' << hex(call.value);
        out << "\n    windows: " << (i < wine.size() ? wine[i] : QByteArray("?"))
            << "\n    store:   " << (i < store.size() ? store[i] : QByteArray("?")) << '\n';
    }
    if (wineDump != storeDump)
        out << "  windows reads its file as:\n"
            << wineDump << "  and the store's as:\n"
            << storeDump;
}

int run(const Options& options) {
    std::vector<Case> cases = compat::handCases();
    const int handCount = static_cast<int>(cases.size());
    for (Case& c : compat::randomCases(options.seed, options.cases))
        cases.push_back(std::move(c));

    QDir work(options.work);
    for (const char* side : {"wine", "store"}) {
        QDir(work.filePath(side)).removeRecursively();
        work.mkpath(side);
    }
    const auto fileOf = [&](const char* side, int i) {
        return work.filePath(QStringLiteral("%1/c%2.ini").arg(side).arg(i));
    };

    QByteArray script;
    std::vector<std::vector<QByteArray>> storeAnswers;
    for (int i = 0; i < static_cast<int>(cases.size()); ++i) {
        const Case& c = cases[static_cast<std::size_t>(i)];
        for (const char* side : {"wine", "store"}) {
            if (!c.before)
                continue;
            QFile f(fileOf(side, i));
            if (!f.open(QIODevice::WriteOnly) || f.write(*c.before) != c.before->size())
                return 2;
        }
        storeAnswers.push_back(runStore(c, fileOf("store", i)));
        script += "C " + hex(windowsPath(fileOf("wine", i))) + '\n';
        for (const Call& call : c.calls) {
            if (call.kind == Call::Read)
                script += "R " + hex(call.section) + ' ' + hex(call.key) + '\n';
            else
                script +=
                    "W " + hex(call.section) + ' ' + hex(call.key) + ' ' + hex(call.value) + '\n';
        }
    }
    for (int i = 0; i < static_cast<int>(cases.size()); ++i) {
        script += "D " + hex(windowsPath(fileOf("wine", i))) + '\n';
        script += "D " + hex(windowsPath(fileOf("store", i))) + '\n';
    }
    const auto wine = runWine(options, script);
    if (!wine)
        return 2;

    QFile reportFile(work.filePath("report.txt"));
    if (!reportFile.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return 2;
    QTextStream report(&reportFile);
    int same = 0;
    int listed = 0;
    QMap<QString, int> byReason;
    int different = 0;
    for (int i = 0; i < static_cast<int>(cases.size()); ++i) {
        const Case& c = cases[static_cast<std::size_t>(i)];
        const std::vector<QByteArray>& windowsAnswers = wine->answers.value(i);
        const QByteArray wineDump = wine->dumps.value(windowsPath(fileOf("wine", i)));
        const QByteArray storeDump = wine->dumps.value(windowsPath(fileOf("store", i)));
        const QString wineMark = markOf(fileOf("wine", i));
        const QString storeMark = markOf(fileOf("store", i));
        const bool agree = windowsAnswers == storeAnswers[static_cast<std::size_t>(i)] &&
                           wineDump == storeDump && wineMark == storeMark;
        if (agree) {
            ++same;
            if (!c.listed.isEmpty())
                report << "case " << i << " (" << c.name << ") agrees now: " << c.listed << '\n';
            continue;
        }
        const std::vector<QByteArray>& ours = storeAnswers[static_cast<std::size_t>(i)];
        std::size_t untilWrite = 0;
        while (untilWrite < c.calls.size() && c.calls[untilWrite].kind == Call::Read)
            ++untilWrite;
        untilWrite = std::min(untilWrite + 1, c.calls.size());
        const bool agreeUntilWrite =
            windowsAnswers.size() == ours.size() &&
            std::equal(ours.begin(), ours.begin() + static_cast<qsizetype>(untilWrite),
                       windowsAnswers.begin());
        const bool unicodeFile = c.before && markOf(fileOf("store", i)) != "single-byte";
        const bool bestFitOnly = unicodeFile && windowsAnswers.size() == ours.size() &&
                                 wineDump == storeDump && wineMark == storeMark &&
                                 std::equal(ours.begin(), ours.end(), windowsAnswers.begin(),
                                            [](const QByteArray& s, const QByteArray& w) {
                                                return s == w || differsByBestFit(w, s);
                                            });
        QString why = c.listed;
        if (why.isEmpty() && bestFitOnly)
            why = QStringLiteral("characters beyond the code page");
        if (why.isEmpty() && agreeUntilWrite && wineMark == storeMark)
            why = rewriteDifference(c.before);
        const bool expected = !why.isEmpty();
        (expected ? listed : different)++;
        if (expected)
            ++byReason[why];
        report << (expected ? "listed difference" : "DIFFERENCE") << " in case " << i << " ("
               << c.name << (i >= handCount ? QStringLiteral(", seed %1").arg(options.seed) : "")
               << ")" << (expected ? ": " + why : QString()) << '\n';
        if (wineMark != storeMark)
            report << "  encoding: windows " << wineMark << ", store " << storeMark << '\n';
        describe(report, c, windowsAnswers, storeAnswers[static_cast<std::size_t>(i)], wineDump,
                 storeDump);
    }
    report.flush();
    std::printf("compat: %d cases (%d by hand, %d random, seed %u): %d the same, %d listed "
                "differences, %d other differences\n",
                static_cast<int>(cases.size()), handCount, options.cases, options.seed, same,
                listed, different);
    for (auto it = byReason.cbegin(); it != byReason.cend(); ++it)
        std::printf("  listed: %s: %d\n", qPrintable(it.key()), it.value());
    if (different > 0) {
        reportFile.close();
        QFile again(reportFile.fileName());
        if (again.open(QIODevice::ReadOnly))
            std::fwrite(again.readAll().constData(), 1, static_cast<std::size_t>(again.size()),
                        stdout);
        return 1;
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    Options options;
    const QStringList args = app.arguments();
    for (int i = 1; i + 1 < args.size(); i += 2) {
        const QString& name = args[i];
        const QString& value = args[i + 1];
        if (name == "--exe")
            options.exe = value;
        else if (name == "--wine")
            options.wine = value;
        else if (name == "--work")
            options.work = value;
        else if (name == "--seed")
            options.seed = value.toUInt();
        else if (name == "--cases")
            options.cases = value.toInt();
    }
    if (options.exe.isEmpty() || options.work.isEmpty()) {
        std::fprintf(stderr,
                     "usage: zavik-compat --exe profilecalls.exe --work DIR [--wine wine64] "
                     "[--seed N] [--cases N]\n");
        return 2;
    }
    return run(options);
}
