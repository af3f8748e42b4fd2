// How the profile store holds up against a game of the largest size: reading
// one key, and saving one deck the way the deck page does.
#include "LargestGame.h"
#include "store/ProfileStore.h"

#include <QFile>
#include <QHash>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <vector>

namespace {

// A profile file handled the way the Windows functions handle it: every read
// parses the whole file, every write parses it and writes the whole of it back.
namespace reference {

struct Parsed {
    std::vector<QByteArray> lines;
    int sectionLine = -1; // header of the first section of the name
    int keyLine = -1;     // first line of the key in that section
    int lastInSection = -1;
};

QByteArray folded(QByteArray name) {
    return name.trimmed().toLower();
}

Parsed parse(const QByteArray& bytes, const QByteArray& section, const QByteArray& key) {
    Parsed parsed;
    const QByteArray wantSection = folded(section);
    const QByteArray wantKey = folded(key);
    bool inSection = false;
    qsizetype start = 0;
    while (start < bytes.size()) {
        qsizetype end = start;
        while (end < bytes.size() && bytes[end] != '\r' && bytes[end] != '\n')
            ++end;
        QByteArray line = bytes.mid(start, end - start);
        start = end +
                ((end + 1 < bytes.size() && bytes[end] == '\r' && bytes[end + 1] == '\n') ? 2 : 1);
        const int index = static_cast<int>(parsed.lines.size());
        const QByteArray trimmed = line.trimmed();
        if (trimmed.startsWith('[') && trimmed.lastIndexOf(']') > 0) {
            const bool match = parsed.sectionLine < 0 &&
                               folded(trimmed.mid(1, trimmed.lastIndexOf(']') - 1)) == wantSection;
            if (match)
                parsed.sectionLine = parsed.lastInSection = index;
            inSection = match;
        } else if (inSection && !trimmed.isEmpty()) {
            parsed.lastInSection = index;
            if (parsed.keyLine < 0 && !trimmed.startsWith(';') &&
                folded(trimmed.left(trimmed.indexOf('='))) == wantKey)
                parsed.keyLine = index;
        }
        parsed.lines.push_back(std::move(line));
    }
    return parsed;
}

QByteArray readAll(const QString& file) {
    QFile f(file);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

QByteArray read(const QByteArray& section, const QByteArray& key, const QString& file) {
    const Parsed parsed = parse(readAll(file), section, key);
    if (parsed.keyLine < 0)
        return {};
    const QByteArray& line = parsed.lines[static_cast<std::size_t>(parsed.keyLine)];
    return line.mid(line.indexOf('=') + 1).trimmed().left(254);
}

bool write(const QByteArray& section, const QByteArray& key, const QByteArray& value,
           const QString& file) {
    Parsed parsed = parse(readAll(file), section, key);
    const QByteArray entry = key + '=' + value;
    if (parsed.keyLine >= 0)
        parsed.lines[static_cast<std::size_t>(parsed.keyLine)] = entry;
    else if (parsed.sectionLine >= 0)
        parsed.lines.insert(parsed.lines.begin() + parsed.lastInSection + 1, entry);
    else {
        parsed.lines.push_back('[' + section + ']');
        parsed.lines.push_back(entry);
    }
    QByteArray out;
    for (const QByteArray& line : parsed.lines)
        out += line + "\r\n";
    QFile f(file);
    return f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(out) == out.size();
}

} // namespace reference

double g_storeSaveNs = 0;
double g_referenceSaveNs = 0;

void BM_ReadOneKeyUnchangedFile(benchmark::State& state) {
    GameFile game;
    store::DropProfileCache();
    const QString section = QStringLiteral("DECK 4 PLAYER 5");
    const QString key = QStringLiteral("card117");
    if (store::ReadProfileValue(section, key, game.path).isEmpty())
        state.SkipWithError("the generated game does not read back");
    for (auto _ : state)
        benchmark::DoNotOptimize(store::ReadProfileValue(section, key, game.path));
    store::DropProfileCache();
}
BENCHMARK(BM_ReadOneKeyUnchangedFile);

// The order in which the deck page saves a deck, with values that differ on
// every round so that each save really changes the file.
template <typename Write> void saveDeck(int round, Write&& write) {
    const QByteArray r = QByteArray::number(round);
    write("decksize", QByteArray::number(150 + round % 50));
    write("img_back", "back" + r + ".bmp");
    write("img_discard", "pile" + r + ".bmp");
    write("deal", QByteArray::number(round % 7));
    write("split", "false");
    write("draw_facedown", "false");
    for (int c = 1; c <= kCards; ++c)
        write("card" + QByteArray::number(c),
              "(x2)card" + r + ".bmp,,Value=" + r + "|Colour=red|Power=12");
}

const char kDeck[] = "DECK 3 PLAYER 2";

void BM_SaveDeckStore(benchmark::State& state) {
    GameFile game;
    store::DropProfileCache();
    int round = 0;
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        ++round;
        // One batch, as the wizard's deck save is: one replace at its end.
        store::WriteBatch batch;
        saveDeck(round, [&](const QByteArray& key, const QByteArray& value) {
            store::WriteProfileValue(kDeck, QString::fromLatin1(key), QString::fromLatin1(value),
                                     game.path);
        });
    }
    g_storeSaveNs =
        std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start).count() /
        static_cast<double>(state.iterations());
    if (store::ReadProfileValue(kDeck, "deal", game.path) != QString::number(round % 7))
        state.SkipWithError("the last save did not reach the store");
    store::DropProfileCache();
}
BENCHMARK(BM_SaveDeckStore)->Unit(benchmark::kMillisecond);

void BM_SaveDeckReference(benchmark::State& state) {
    GameFile game;
    int round = 0;
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        ++round;
        saveDeck(round, [&](const QByteArray& key, const QByteArray& value) {
            reference::write(kDeck, key, value, game.path);
        });
    }
    g_referenceSaveNs =
        std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start).count() /
        static_cast<double>(state.iterations());
    if (reference::read(kDeck, "deal", game.path) != QByteArray::number(round % 7))
        state.SkipWithError("the reference lost a write");
}
BENCHMARK(BM_SaveDeckReference)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    std::printf("game file: %lld bytes\n", static_cast<long long>(largestGame().size()));
    std::fflush(stdout);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    if (g_storeSaveNs > 0 && g_referenceSaveNs > 0) {
        std::printf(
            "deck save: store %.2f ms, whole-file reference %.2f ms, ratio %.1f (goal >= 50)\n",
            g_storeSaveNs / 1e6, g_referenceSaveNs / 1e6, g_referenceSaveNs / g_storeSaveNs);
    }
    return 0;
}
