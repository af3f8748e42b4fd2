// What assistive tools find on the forms: a name for every control a user can
// reach, and a Tab chain that reads each page line by line.

#include "runtime/Controls.h"
#include "runtime/Form.h"
#include "wizard/Catalogue.h"

#include <QAccessible>
#include <gtest/gtest.h>
#include <memory>

using namespace rt;

namespace {

QString spokenName(QWidget* w) {
    QAccessibleInterface* face = QAccessible::queryAccessibleInterface(w);
    return face ? face->text(QAccessible::Name) : QString();
}

bool reachable(const Control& c) {
    return (c.widget()->focusPolicy() & Qt::TabFocus) && c.kind() != Kind::Frame;
}

} // namespace

TEST(Accessibility, EveryControlAUserReachesHasAName) {
    for (const FormSpec* spec : allFormSpecs()) {
        std::unique_ptr<Form> form(new Form(*spec));
        for (const auto& c : form->controls()) {
            if (reachable(*c)) {
                EXPECT_FALSE(spokenName(c->widget()).isEmpty())
                    << spec->name.toStdString() << "." << c->name().toStdString();
            }
        }
    }
}

TEST(Accessibility, FieldsGoByTheirLabelsAndCaptionsAsTheyRead) {
    std::unique_ptr<Form> main(new Form(wizard::mainFormSpec()));
    auto name = [&](const char* control, int index = -1) {
        return spokenName(main->control(control, index)->widget());
    };
    EXPECT_EQ(name("NameTXT"), "Name");
    EXPECT_EQ(name("descTxt"), "Description");
    EXPECT_EQ(name("PLname", 3), "Player #4");
    EXPECT_EQ(name("DealCrds"), "Cards to deal");
    EXPECT_EQ(name("File1"), "Images in the Game Directory");
    EXPECT_EQ(name("backImg"), "Back");
    EXPECT_EQ(name("discardImg"), "Discard");
    EXPECT_EQ(name("repNum"), "Number of Reports");
    EXPECT_EQ(name("Wiz", 6), "Properties & Reports");
    // A label whose text changes renames its field.
    EXPECT_EQ(name("commonList"), "Cards: 0");
    main->get<Label>("commLabel")->setCaption("Cards: 2 (tot: 4)");
    EXPECT_EQ(name("commonList"), "Cards: 2 (tot: 4)");
    main->get<CommandButton>("PL_data", 0)->setCaption("Player # 1 data (1 deck)");
    EXPECT_EQ(name("PL_data", 0), "Player # 1 data (1 deck)");

    std::unique_ptr<Form> tree(new Form(wizard::treeFormSpec()));
    EXPECT_EQ(spokenName(tree->control("GameList")->widget()), "Game Tree");
}

TEST(Accessibility, TabGoesLineByLineFromLeftToRightOnEachPage) {
    std::unique_ptr<Form> main(new Form(wizard::mainFormSpec()));
    auto next = [&](const char* control, int index = -1) -> QString {
        QWidget* w = main->control(control, index)->widget()->nextInFocusChain();
        for (; w; w = w->nextInFocusChain())
            for (const auto& c : main->controls())
                if (c->widget() == w && reachable(*c))
                    return c->name();
        return {};
    };
    EXPECT_EQ(next("NameTXT"), "Command10");
    EXPECT_EQ(next("Command10"), "descTxt");
    EXPECT_EQ(next("DirName"), "NewDirBtn");
    EXPECT_EQ(next("PlNum"), "PLname(0)");
    EXPECT_EQ(next("PLname", 0), "PL_data(0)");
    EXPECT_EQ(next("PL_data", 0), "PLname(1)");
    EXPECT_EQ(next("DealCrds"), "File1");
    EXPECT_EQ(next("File1"), "commonList");
    EXPECT_EQ(next("commonList"), "Command3");
    EXPECT_EQ(next("Command1"), "Command6");
    EXPECT_EQ(next("Command6"), "Command11");
    EXPECT_EQ(next("Command8"), "Command5");
    EXPECT_EQ(next("PrevStep"), "NextStep");
    EXPECT_EQ(next("NextStep"), "TreeBtn");

    // Within any one page no stop lies above the one before it.
    for (const auto& c : main->controls()) {
        if (!reachable(*c))
            continue;
        const QString after = next(c->baseName().toLatin1().constData(), c->index());
        Control* n = nullptr;
        for (const auto& o : main->controls())
            if (o->name() == after)
                n = o.get();
        if (!n || n->widget()->parentWidget() != c->widget()->parentWidget())
            continue;
        EXPECT_GT(n->Top() + 180, c->Top())
            << c->name().toStdString() << " -> " << after.toStdString();
    }
}
