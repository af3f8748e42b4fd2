// The question box and the file dialogs, answered by the file's answer and
// choose lines in order.

#include "tools/scenario/Runner.h"

#include <QDir>

namespace scenario {
namespace {

// A question is recorded as a message box with the question icon would be.
constexpr int kQuestionStyle = 32;

QString quotedList(const QStringList& texts) {
    QStringList out;
    for (const QString& t : texts)
        out << quoted(t);
    return out.join(QStringLiteral(", "));
}

} // namespace

std::optional<QStringList> Runner::takeChoice(const QString& dialog, const QString& filter) {
    if (m_failed)
        return std::nullopt;
    if (m_choices.empty()) {
        fail(currentLine(), QStringLiteral("expected a choose for the %1 (filter %2), found none")
                                .arg(dialog, quoted(filter)));
        return std::nullopt;
    }
    QStringList choice = m_choices.front();
    m_choices.pop_front();
    for (QString& path : choice)
        if (!path.isEmpty() && !QDir::isAbsolutePath(path))
            path = m_appPath + QLatin1Char('/') + path;
    return choice;
}

QString Runner::onShowSave(const QString& filter, const QString& suggestedName) {
    const auto choice = takeChoice(QStringLiteral("save dialog"), filter);
    if (!choice)
        return {};
    if (choice->size() > 1) {
        fail(currentLine(), QStringLiteral("expected a choose of one file for the save dialog "
                                           "(suggesting %1), found %2 files")
                                .arg(quoted(suggestedName))
                                .arg(choice->size()));
        return {};
    }
    return choice->front();
}

QStringList Runner::onShowOpenMany(const QString& filter) {
    const auto choice = takeChoice(QStringLiteral("open dialog of several files"), filter);
    if (!choice || (choice->size() == 1 && choice->front().isEmpty()))
        return {};
    return *choice;
}

QString Runner::onAsk(const QString& text, const QStringList& buttons) {
    m_messages.push_back({text, kQuestionStyle, currentLine()});
    const QString closed = buttons.value(buttons.size() - 1);
    if (m_failed)
        return closed;
    if (m_answers.empty()) {
        fail(currentLine(), QStringLiteral("expected an answer for the question %1 (buttons %2), "
                                           "found none")
                                .arg(quoted(text), quotedList(buttons)));
        return closed;
    }
    const QString answer = m_answers.front();
    m_answers.pop_front();
    if (!buttons.contains(answer)) {
        fail(currentLine(), QStringLiteral("expected a button %1 in the question %2, found %3")
                                .arg(quoted(answer), quoted(text), quotedList(buttons)));
        return closed;
    }
    return answer;
}

} // namespace scenario
