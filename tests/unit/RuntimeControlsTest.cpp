// Key and list rules of the controls on a small form of their own, and folders as on Windows.

#include "runtime/FileSystem.h"
#include "runtime/Form.h"
#include "runtime/Runtime.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <memory>
#include <sys/stat.h>

using namespace rt;

namespace {

const FormSpec kSpec = [] {
    FormSpec spec{"TestForm", "Test", 4000, 3000, Border::FixedToolWindow, true, {}};
    spec.controls = {
        {"Name", -1, Kind::TextBox, "", 0, 0, 1000, 300, ""},
        {"Pick", -1, Kind::ComboBox, "Combo1", 0, 1400, 1000, 300, "", 0, 0, "a|b|c"},
        {"Choice", -1, Kind::ComboBox, "", 0, 1800, 1000, 300, "", ListOnly, 0, "x|y"},
        {"Rows", -1, Kind::ListBox, "", 1200, 0, 1000, 900, "", MultiSelect, 0, "r0|r1|r2"}};
    return spec;
}();

class ControlsTest : public ::testing::Test {
protected:
    std::unique_ptr<Form> form = std::make_unique<Form>(kSpec);
};

TEST_F(ControlsTest, KeysReachTheFormFirstAndListsKeepRowsTextsAndData) {
    struct PreviewForm : Form {
        using Form::Form;
        QString seen;
        void Form_KeyPress(int& k) override {
            seen += QChar(k);
            if (k == 'q')
                k = 0;
        }
    } preview(kSpec);
    auto* name = preview.get<TextBox>("Name");
    QString order;
    name->KeyPress = [&](int& k) {
        order += QChar(k);
        if (k == 'a')
            k = 'A';
    };
    for (char c : QByteArray("aqz\b"))
        name->userKey(c);
    EXPECT_EQ(preview.seen, QString("aqz\b"));
    EXPECT_EQ(order, QString("az\b")) << "q was stopped by the form";
    EXPECT_EQ(name->Text(), "A");

    auto* pick = form->get<ComboBox>("Pick");
    int clicks = 0;
    pick->Click = [&] { ++clicks; };
    EXPECT_EQ(pick->Text(), "Combo1");
    EXPECT_EQ(pick->ListIndex(), -1);
    pick->setListIndex(1);
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(pick->Text(), "b");
    pick->setText("typed");
    EXPECT_EQ(pick->ListIndex(), -1);
    pick->AddItem("d");
    EXPECT_EQ(pick->Text(), "typed");
    pick->Clear();
    EXPECT_EQ(pick->Text(), "");
    EXPECT_EQ(pick->ListCount(), 0);

    auto* choice = form->get<ComboBox>("Choice");
    EXPECT_EQ(choice->Text(), "");
    choice->userPick(1);
    EXPECT_EQ(choice->Text(), "y");

    auto* rows = form->get<ListBox>("Rows");
    rows->setItemData(2, 77);
    rows->RemoveItem(0);
    EXPECT_EQ(rows->List(1), "r2");
    EXPECT_EQ(rows->ItemData(1), 77);
    for (int row : {0, 1, 0})
        rows->userPick(row);
    EXPECT_FALSE(rows->Selected(0));
    EXPECT_TRUE(rows->Selected(1));
}

TEST(FileSystem, DirListsAsAWindowsFolderDoes) {
    QTemporaryDir dir;
    const QString root = dir.path();
    for (const char* name :
         {"b.game", "A.game", "_draft.game", "c.GAME", ".game", "x.gamex", "notes.txt"})
        QFile(root + "/" + name).open(QIODevice::WriteOnly);
    QDir(root).mkdir("Cards");
    QDir(root).mkdir(".hidden");

    QStringList games;
    for (QString n = Dir(root + "/*.game"); !n.isEmpty(); n = Dir())
        games << n;
    EXPECT_EQ(games, (QStringList{".game", "A.game", "b.game", "c.GAME", "_draft.game"}));
    QStringList all;
    for (QString n = Dir(root + "/", vbDirectory); !n.isEmpty(); n = Dir())
        all << n;
    EXPECT_EQ(all.mid(0, 2), (QStringList{".", ".."}));
    EXPECT_TRUE(all.contains("Cards"));
    EXPECT_TRUE(all.contains("notes.txt"));

    EXPECT_EQ(GetAttr(root + "/Cards"), vbDirectory);
    ::chmod(QFile::encodeName(root + "/Cards").constData(), 0555);
    EXPECT_EQ(GetAttr(root + "/Cards"), vbDirectory | vbReadOnly);
    EXPECT_EQ(GetAttr(root + "/missing"), -1);
    EXPECT_EQ(Dir(root + "/a.game"), "") << "a name without wildcards is taken as it is";
    EXPECT_EQ(listFiles(root, "*.txt;*.GAMEX"), (QStringList{"notes.txt", "x.gamex"}));
    QString reason;
    EXPECT_FALSE(MkDir(root + "/Cards", &reason));
    EXPECT_FALSE(reason.isEmpty());
}

} // namespace
