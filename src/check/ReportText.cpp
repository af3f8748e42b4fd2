#include "check/ReportText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringBuilder>

namespace check {

namespace {

QString plural(int n, const char* one, const char* many) {
    return QString::number(n) + QLatin1Char(' ') + QLatin1String(n == 1 ? one : many);
}

} // namespace

QString whereName(Where where) {
    switch (where) {
    case Where::Game:
        return QStringLiteral("game");
    case Where::Player:
        return QStringLiteral("player");
    case Where::CommonDeck:
        return QStringLiteral("common deck");
    case Where::PlayerDeck:
        return QStringLiteral("player deck");
    case Where::PropertyLists:
        return QStringLiteral("property lists");
    case Where::Report:
        break;
    }
    return QStringLiteral("report");
}

QString findingLine(const GameReport& report, const Finding& finding) {
    // Built in one piece (%): a large game has thousands of findings.
    return report.file % QLatin1Char(':') % QString::number(finding.place.line) %
           QLatin1String(": ") % severityName(finding.severity) % QLatin1String(": ") %
           finding.message;
}

QString summaryLine(const std::vector<GameReport>& reports) {
    int errors = 0;
    int warnings = 0;
    int notes = 0;
    int unreadable = 0;
    for (const GameReport& r : reports) {
        errors += r.count(Severity::Error);
        warnings += r.count(Severity::Warning);
        notes += r.count(Severity::Note);
        unreadable += r.unreadable.isEmpty() ? 0 : 1;
    }
    QString text = plural(errors, "error", "errors") + QStringLiteral(", ") +
                   plural(warnings, "warning", "warnings") + QStringLiteral(", ") +
                   plural(notes, "note", "notes") + QStringLiteral(" in ") +
                   plural(static_cast<int>(reports.size()), "file", "files");
    if (unreadable > 0)
        text += QStringLiteral("; ") + plural(unreadable, "file", "files") +
                QStringLiteral(" could not be read");
    return text;
}

QByteArray toJson(const std::vector<GameReport>& reports) {
    QJsonArray files;
    for (const GameReport& r : reports) {
        QJsonObject file;
        file.insert(QStringLiteral("file"), r.file);
        if (!r.unreadable.isEmpty())
            file.insert(QStringLiteral("unreadable"), r.unreadable);
        QJsonArray findings;
        for (const Finding& f : r.findings) {
            QJsonObject o;
            o.insert(QStringLiteral("severity"), severityName(f.severity));
            o.insert(QStringLiteral("line"), f.place.line);
            o.insert(QStringLiteral("section"), f.place.section);
            o.insert(QStringLiteral("key"), f.place.key);
            o.insert(QStringLiteral("where"), whereName(f.place.where));
            if (f.place.player > 0)
                o.insert(QStringLiteral("player"), f.place.player);
            if (f.place.deck > 0)
                o.insert(QStringLiteral("deck"), f.place.deck);
            if (f.place.report > 0)
                o.insert(QStringLiteral("report"), f.place.report);
            o.insert(QStringLiteral("message"), f.message);
            findings.append(o);
        }
        file.insert(QStringLiteral("findings"), findings);
        files.append(file);
    }
    QJsonObject root;
    root.insert(QStringLiteral("files"), files);
    root.insert(QStringLiteral("summary"), summaryLine(reports));
    return QJsonDocument(root).toJson(QJsonDocument::Indented);
}

} // namespace check
