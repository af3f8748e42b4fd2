#pragma once
// The wizard on a temporary folder, message boxes caught, driven by QTest keys and mouse.

#include "app/Program.h"
#include "runtime/Runtime.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QListWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include <functional>

class ProgramTest : public ::testing::Test {
protected:
    void SetUp() override {
        rt::setAppPath(dir.path());
        rt::hooks().msgBox = [this](const QString& text, int) { messages << text; };
    }
    void TearDown() override {
        wizard::stopProgram();
        rt::hooks() = {};
    }
    MainForm* start() { return form = static_cast<MainForm*>(wizard::startProgram()); }
    // A file below the application folder, its folders made as needed.
    QString file(const QString& name, const QByteArray& bytes = {}) {
        const QString where = dir.filePath(name);
        QDir().mkpath(QFileInfo(where).absolutePath());
        QFile f(where);
        EXPECT_TRUE(f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size()) << name;
        return where;
    }
    QByteArray read(const QString& name) const {
        QFile f(dir.filePath(name));
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
    void image(const QString& name, int w, int h) {
        QImage picture(w, h, QImage::Format_RGB32);
        picture.fill(Qt::darkGreen);
        EXPECT_TRUE(picture.save(file(name))) << name;
    }

    QTemporaryDir dir;
    QStringList messages;
    MainForm* form = nullptr;
};

// As a user runs it: events pass the focus rules, and a modal form waits in its own loop.
class WindowTest : public ProgramTest {
protected:
    void SetUp() override {
        rt::installInteractiveSupport();
        rt::installDefaultHooks();
        ProgramTest::SetUp();
    }
    // Shown and active, as a user's window is: its shortcuts need that.
    void show() {
        start();
        activate();
    }
    // A window manager gives the main window back its activation when a
    // dialog closes; offscreen, the test does.
    void activate() {
        form->activateWindow();
        QApplication::setActiveWindow(form);
        EXPECT_TRUE(QTest::qWaitForWindowActive(form));
    }

    // A click as the mouse sends it: to the window, which hands it down to the
    // widget under the pointer after moving the focus there.
    static void click(const rt::Control* c) {
        QWidget* w = c->widget();
        QTest::mouseClick(w->window()->windowHandle(), Qt::LeftButton, {},
                          w->mapTo(w->window(), w->rect().center()));
    }
    static void type(const rt::Control* c, const QString& text) {
        QTest::keyClicks(c->widget(), text);
    }
    static void press(const rt::Control* c, Qt::Key key) { QTest::keyClick(c->widget(), key); }
    // Where a user's key goes.
    static QWidget* focused(QWidget* otherwise) {
        return QApplication::focusWidget() ? QApplication::focusWidget() : otherwise;
    }
    static QListWidget* listOf(const rt::Control* list) {
        return qobject_cast<QListWidget*>(list->widget());
    }
    static QPoint rowCentre(const rt::Control* list, int row) {
        return listOf(list)->visualItemRect(listOf(list)->item(row)).center();
    }
    static void clickRow(const rt::Control* list, int row) {
        QTest::mouseClick(listOf(list)->viewport(), Qt::LeftButton, {}, rowCentre(list, row));
    }
    // The first click of a double click selects the row, as a user's does.
    static void doubleClickRow(const rt::Control* list, int row) {
        clickRow(list, row);
        QTest::mouseDClick(listOf(list)->viewport(), Qt::LeftButton, {}, rowCentre(list, row));
    }
    // A modal form blocks its action: what looks at it and closes it runs inside its wait.
    static void whileModal(std::function<void()> inside) { QTimer::singleShot(0, inside); }
};
