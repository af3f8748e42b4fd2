#pragma once
// Brings the title's mark up to date a moment after the user's last key or click.

#include <QObject>
#include <QPointer>
#include <QTimer>

class MainForm;

namespace desktop {

class UnsavedMark : public QObject {
public:
    static constexpr int PauseMs = 400;
    explicit UnsavedMark(MainForm* form);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QPointer<MainForm> m_form;
    QTimer m_pause;
};

} // namespace desktop
