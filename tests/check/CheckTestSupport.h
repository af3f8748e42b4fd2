#pragma once
// A game folder in a temporary directory, and findings as `zavik-check` prints them.

#include "check/GameChecker.h"
#include "store/ProfileStore.h"

#include <QDir>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <string>

namespace checktest {

class GameFolder : public ::testing::Test {
protected:
    void SetUp() override {
        store::DropProfileCache();
        ASSERT_TRUE(dir.isValid());
    }

    QString path(const QString& name) const { return dir.filePath(name); }

    void write(const QString& name, const QByteArray& bytes) {
        QDir().mkpath(QFileInfo(path(name)).absolutePath());
        QFile f(path(name));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }

    // Lines of text, each ended by CR LF.
    void game(const QStringList& lines, const QString& name = QStringLiteral("g.game")) {
        write(name, (lines.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n")).toLatin1());
    }

    void images(const QString& folder, const QStringList& names) {
        for (const QString& n : names)
            write(folder + QLatin1Char('/') + n, "x");
    }

    // Each after a line break, as a raw string opened on a line holds them; fails as a diff.
    std::string findings(const QString& name = QStringLiteral("g.game")) {
        store::DropProfileCache();
        const check::GameReport report = check::checkGame(path(name));
        QString out;
        if (!report.unreadable.isEmpty())
            out += QStringLiteral("\nunreadable: ") + report.unreadable;
        for (const check::Finding& f : report.findings)
            out += QStringLiteral("\n%1: %2: %3")
                       .arg(f.place.line)
                       .arg(check::severityName(f.severity), f.message);
        return out.toStdString();
    }

    QTemporaryDir dir;
};

} // namespace checktest
