#include "wizard/Catalogue.h"

#include <QString>

namespace wizard {
namespace {

using rt::Kind;
using enum rt::Flag;

constexpr QRgb Yellow = 0xFFFFFF00;
constexpr QRgb LightGreen = 0xFF80FF80;
constexpr QRgb Orange = 0xFFFFC080;
constexpr QRgb Grey = 0xFFC0C0C0;

QString nth(const char* pattern, int n) {
    return QString::fromLatin1(pattern).arg(n);
}

// Page 6 holds four property lists, one a quarter of its frame, each a name
// above two columns of three property names.
void addPropertyLists(std::vector<rt::ControlSpec>& c) {
    auto quarterX = [](int k) { return 120 + (k % 2) * 4320; };
    auto quarterY = [](int k) { return 60 + (k / 2) * 1620; };
    for (int k = 0; k < 4; ++k) {
        c.push_back({"lbl", k, Kind::Label, "Name", quarterX(k), quarterY(k) + 15, 630, 285,
                     "pNameFrame", SansBold | Centred, Yellow});
        c.push_back({"pListName", k, Kind::TextBox, "", quarterX(k) + 690, quarterY(k), 3450, 315,
                     "pNameFrame", 0, 0xFFFFFFFF});
        for (int j = 0; j < 6; ++j) {
            const int x = quarterX(k) + (j / 3) * 2130;
            const int y = quarterY(k) + 420 + (j % 3) * 375;
            c.push_back({"lbl", 4 + k * 6 + j, Kind::Label, QString::number(j + 1), x, y + 15, 285,
                         285, "pNameFrame", SansBold | Centred, Orange});
            c.push_back({"pName", k * 6 + j, Kind::TextBox, "", x + 345, y, 1665, 315, "pNameFrame",
                         0, 0xFFFFFFFF});
        }
    }
}

rt::FormSpec buildMainForm() {
    rt::FormSpec f{"MainForm", "Zavik Wizard - ver 1.0.1", 9195, 6450, rt::Border::Sizable, false,
                   {}};
    auto& c = f.controls;
    const char* captions[8] = {
        "General Info", "Players Info", "Players Detail",        "Decks Info",
        "Decks Detail", "Card Detail",  "Properties && Reports", "Report Detail"};
    auto page = [&](int i) {
        c.push_back(
            {"Wiz", i, Kind::Frame, captions[i], 90, 90, 9015, 5775, "", Hidden | ArialBold});
    };

    // General Info
    page(0);
    c.insert(
        c.end(),
        {
            {"Label1", -1, Kind::Label, "Name", 240, 435, 1200, 255, "Wiz(0)", ArialBold},
            {"NameTXT", -1, Kind::ComboBox, "", 1560, 375, 3615, 315, "Wiz(0)"},
            {"Command10", -1, Kind::CommandButton, "Load", 5295, 360, 1095, 345, "Wiz(0)", Hidden},
            {"dialog1", -1, Kind::CommonDialog, "", 0, 0, 0, 0, "Wiz(0)"},
            {"Label2", -1, Kind::Label, "Description", 240, 855, 1200, 255, "Wiz(0)", ArialBold},
            {"descTxt", -1, Kind::TextBox, "", 1560, 810, 7215, 1800, "Wiz(0)", MultiLine},
            {"Label3", -1, Kind::Label, "Directory", 240, 2835, 1200, 255, "Wiz(0)", ArialBold},
            {"DirName", -1, Kind::ComboBox, "Combo1", 1560, 2775, 3615, 315, "Wiz(0)"},
            {"NewDirBtn", -1, Kind::CommandButton, "New Dir", 5295, 2760, 1095, 345, "Wiz(0)"},
            {"Label16", -1, Kind::Label, "DeskTop", 240, 3315, 1200, 255, "Wiz(0)", ArialBold},
            {"DeskTopImage", -1, Kind::Label, "", 1560, 3255, 3615, 315, "Wiz(0)", BorderSingle,
             LightGreen},
            {"SetDesktopImage", -1, Kind::CommandButton, "Select", 5295, 3240, 1095, 345, "Wiz(0)"},
            {"mainHelp", -1, Kind::Label, "", 120, 4560, 8790, 1095, "Wiz(0)", BorderSingle,
             Orange},
        });

    // Players Info
    page(1);
    c.push_back(
        {"Label4", -1, Kind::Label, "Number of Players", 240, 435, 2040, 255, "Wiz(1)", ArialBold});
    c.push_back({"PlNum", -1, Kind::TextBox, "", 2340, 375, 735, 315, "Wiz(1)"});
    for (int i = 0; i < 6; ++i) {
        const int top = 1020 + i * 510;
        c.push_back({"PLlabel", i, Kind::Label, nth("Player #%1", i + 1), 240, top + 45, 1200, 255,
                     "Wiz(1)", Hidden | ArialBold});
        c.push_back({"PLname", i, Kind::TextBox, "", 1560, top, 3615, 315, "Wiz(1)", Hidden});
        c.push_back({"PL_data", i, Kind::CommandButton, "Player Detail", 5295, top - 15, 2895, 345,
                     "Wiz(1)", Hidden});
    }

    // Players Detail
    page(2);
    c.push_back({"Label10", -1, Kind::Label, "Number of Player's decks", 240, 435, 2640, 255,
                 "Wiz(2)", ArialBold});
    c.push_back({"NumPLdecks", -1, Kind::TextBox, "", 2940, 375, 735, 315, "Wiz(2)"});
    for (int i = 0; i < 6; ++i)
        c.push_back({"ShowPlayerDeck", i, Kind::CommandButton, nth("Show PlayerDeck #%1", i + 1),
                     240, 1020 + i * 510, 2640, 375, "Wiz(2)", Hidden});
    c.push_back({"MrkUseOption", -1, Kind::CheckBox, "Player use Markers", 5295, 375, 3000, 315,
                 "Wiz(2)", ArialBold});
    c.push_back({"ShowMarkersBtn", -1, Kind::CommandButton, "Show Player Markers", 5295, 1020, 2640,
                 375, "Wiz(2)", Hidden});

    // Decks Info
    page(3);
    c.push_back({"Label5", -1, Kind::Label, "Number of Common decks", 240, 435, 2640, 255, "Wiz(3)",
                 ArialBold});
    c.push_back({"CommDecksNum", -1, Kind::TextBox, "", 2940, 375, 735, 315, "Wiz(3)"});
    for (int i = 0; i < 6; ++i)
        c.push_back({"ShowCommonDeck", i, Kind::CommandButton, nth("Show Common Deck #%1", i + 1),
                     240, 1020 + i * 510, 2640, 375, "Wiz(3)", Hidden});

    // Decks Detail: images on the left, the deck's cards in the middle, its
    // back and discard images on the right.
    page(4);
    c.insert(
        c.end(),
        {
            {"Command9", -1, Kind::CommandButton, "Advanced Properties", 240, 345, 1935, 345,
             "Wiz(4)"},
            {"Label9", -1, Kind::Label, "Cards to deal", 2400, 405, 1320, 255, "Wiz(4)", ArialBold},
            {"DealCrds", -1, Kind::TextBox, "0", 3720, 360, 615, 315, "Wiz(4)"},
            {"Command11", -1, Kind::CommandButton, "Refresh", 240, 4935, 960, 345, "Wiz(4)"},
            {"Label8", -1, Kind::Label, "Images in the Game Directory", 240, 855, 3015, 255,
             "Wiz(4)", ArialBold},
            {"File1", -1, Kind::FileListBox, "", 240, 1125, 3000, 3690, "Wiz(4)", MultiSelect, 0,
             "", "*.bmp;*.jpg;*.gif"},
            {"Command8", -1, Kind::CommandButton, "Select All", 1260, 4935, 960, 345, "Wiz(4)"},
            {"Command5", -1, Kind::CommandButton, "Select None", 2280, 4935, 960, 345, "Wiz(4)"},
            {"Command1", -1, Kind::CommandButton, "->", 3390, 2415, 480, 345, "Wiz(4)"},
            {"Command6", -1, Kind::CommandButton, "<-", 3390, 2895, 480, 345, "Wiz(4)"},
            {"commonList", -1, Kind::ListBox, "", 4020, 1125, 2640, 3690, "Wiz(4)"},
            {"Command7", -1, Kind::CommandButton, "clear", 4020, 4935, 960, 345, "Wiz(4)"},
            {"commLabel", -1, Kind::Label, "Cards: 0", 4020, 855, 2640, 255, "Wiz(4)"},
            {"Command3", -1, Kind::CommandButton, "->", 6795, 1125, 480, 345, "Wiz(4)"},
            {"backImg", -1, Kind::ListBox, "", 7410, 1125, 1485, 345, "Wiz(4)"},
            {"Label7", -1, Kind::Label, "Back", 7410, 855, 1485, 255, "Wiz(4)", ArialBold},
            {"Command4", -1, Kind::CommandButton, "->", 6795, 1935, 480, 345, "Wiz(4)"},
            {"discardImg", -1, Kind::ListBox, "", 7410, 1935, 1485, 345, "Wiz(4)"},
            {"Label6", -1, Kind::Label, "Discard", 7410, 1665, 1485, 255, "Wiz(4)", ArialBold},
        });

    // Card Detail: a page without controls.
    page(5);

    // Properties and reports
    page(6);
    c.push_back(
        {"UsePropOpt", -1, Kind::CheckBox, "Use Properties", 240, 360, 2400, 315, "Wiz(6)"});
    c.push_back({"pNameFrame", -1, Kind::Frame, "Property list", 240, 765, 8700, 3300, "Wiz(6)",
                 Hidden | NoBorder, Grey});
    addPropertyLists(c);
    c.push_back({"repFrame", -1, Kind::Frame, "Frame1", 240, 4170, 8700, 1455, "Wiz(6)",
                 Hidden | NoBorder});
    c.push_back(
        {"Label11", -1, Kind::Label, "Number of Reports", 0, 60, 1920, 255, "repFrame", ArialBold});
    c.push_back({"repNum", -1, Kind::TextBox, "", 1980, 0, 615, 315, "repFrame"});
    for (int i = 0; i < 8; ++i)
        c.push_back({"ShowReport", i, Kind::CommandButton, nth("Show Report #%1", i + 1),
                     (i % 4) * 2200, 525 + (i / 4) * 465, 2100, 375, "repFrame", Hidden});

    // Report Detail
    page(7);
    c.insert(
        c.end(),
        {
            {"Label12", -1, Kind::Label, "Title", 240, 435, 1200, 255, "Wiz(7)", ArialBold},
            {"RepTitle", -1, Kind::TextBox, "", 1560, 375, 4215, 315, "Wiz(7)"},
            {"Label13", -1, Kind::Label, "Type", 240, 915, 1200, 255, "Wiz(7)", ArialBold},
            {"repType", -1, Kind::ComboBox, "", 1560, 855, 2055, 315, "Wiz(7)", ListOnly, 0,
             "SUM|COUNT"},
            {"Label14", -1, Kind::Label, "Scope", 240, 1395, 1200, 255, "Wiz(7)", ArialBold},
            {"repScope", -1, Kind::ComboBox, "", 1560, 1335, 2055, 315, "Wiz(7)", ListOnly, 0,
             "ALL|HAND|SELECTED"},
            {"Label15", -1, Kind::Label, "Property", 240, 1875, 1200, 255, "Wiz(7)", ArialBold},
            {"RepPropName", -1, Kind::ComboBox, "", 1560, 1815, 2055, 315, "Wiz(7)", ListOnly, 0,
             "ALL|HAND|SELECTED"},
            {"RepOnlyOwned", -1, Kind::CheckBox, "Use only cards owned", 1560, 2310, 3000, 315,
             "Wiz(7)"},
        });

    // Outside the pages: the help boxes, the button bar and the status line.
    c.push_back({"helpLabel", 0, Kind::PictureBox, "", 0, 0, 1575, 1215, "", Hidden, Yellow});
    c.push_back({"buttonFrame", -1, Kind::Frame, "Frame1", 3780, 6000, 5295, 375, "", NoBorder});
    c.insert(
        c.end(),
        {
            {"PrevStep", -1, Kind::CommandButton, "<< Back", 300, 0, 1095, 375, "buttonFrame"},
            {"NextStep", -1, Kind::CommandButton, "Forward >>", 1515, 0, 1095, 375, "buttonFrame"},
            {"TreeBtn", -1, Kind::CommandButton, "Index", 2730, 0, 975, 375, "buttonFrame"},
            {"Command2", -1, Kind::CommandButton, "Save", 3825, 0, 975, 375, "buttonFrame"},
            {"HelpBtn", -1, Kind::CommandButton, "?", 4920, 0, 375, 375, "buttonFrame"},
            // Where a write of the game file failed, and why.
            {"statusLine", -1, Kind::Label, "", 120, 6045, 3570, 330, "", 0},
        });
    return f;
}

rt::FormSpec buildCheckForm() {
    return {"CheckForm",
            "Check Phase",
            4710,
            3645,
            rt::Border::FixedToolWindow,
            true,
            {{"Text1", -1, Kind::TextBox, "Text1", 0, 0, 4695, 3615, "", MultiLine}}};
}

rt::FormSpec buildCardDetailForm() {
    rt::FormSpec f{
        "CardDetailForm", "Card Detail", 2760, 1635, rt::Border::FixedToolWindow, true, {}};
    auto& c = f.controls;
    c.insert(
        c.end(),
        {
            {"Label1", -1, Kind::Label, "Label1", 60, 90, 2640, 255, "", ArialBold | Centred},
            {"Label2", -1, Kind::Label, "# of cards", 120, 495, 900, 255, ""},
            {"CrdX", -1, Kind::TextBox, "", 1035, 435, 615, 315, ""},
            {"Command2", -1, Kind::CommandButton, "show", 1770, 420, 870, 345, ""},
            {"Command1", -1, Kind::CommandButton, "Update", 945, 1260, 870, 315, "", DefaultButton},
            {"propFrame", -1, Kind::Frame, "Properties", 80, 1050, 2640, 2640, "", Hidden},
            {"pListNames", -1, Kind::ComboBox, "", 120, 300, 2400, 315, "propFrame", ListOnly},
        });
    for (int j = 0; j < 6; ++j) {
        const int y = 690 + j * 315;
        // Wide enough for a property name, not just the design's "1" to "6".
        c.push_back({"lbl", j, Kind::Label, QString::number(j + 1), 120, y + 15, 1110, 270,
                     "propFrame", Centred, Orange});
        c.push_back(
            {"pName", j, Kind::TextBox, "", 1290, y, 1230, 300, "propFrame", 0, 0xFFFFFFFF});
    }
    return f;
}

rt::FormSpec buildAdvancedDeckPropForm() {
    return {"AdvancedDeckPropForm",
            "Deck Properties",
            3045,
            2955,
            rt::Border::FixedToolWindow,
            false,
            {
                {"SplitOption", -1, Kind::CheckBox, "Split the deck between players", 120, 120,
                 2805, 555, "", ArialBold},
                {"ViewDiscardOpt", -1, Kind::CheckBox, "Discarded cards can be examined", 120, 795,
                 2805, 555, "", ArialBold},
                {"DrawFacedownOpt", -1, Kind::CheckBox, "Cards are drawn face down", 120, 1470,
                 2805, 555, "", ArialBold},
                {"resize", -1, Kind::CheckBox,
                 "The discarded cards are resized to fit the discard image size", 120, 2145, 2805,
                 690, "", ArialBold},
            }};
}

rt::FormSpec buildShowCrdForm() {
    return {"ShowCrdForm",
            "Card Image",
            855,
            915,
            rt::Border::FixedToolWindow,
            true,
            {{"crdPict", -1, Kind::PictureBox, "", 0, 0, 855, 915, "", AutoSize}}};
}

rt::FormSpec buildTreeForm() {
    return {"TreeForm",
            "Game Tree",
            3195,
            2835,
            rt::Border::FixedToolWindow,
            false,
            {{"GameList", -1, Kind::ListBox, "", 0, 0, 3165, 2790, "", 0, Orange}}};
}

rt::FormSpec buildShowImgList() {
    return {"ShowImgList",
            "ImageList",
            2550,
            3030,
            rt::Border::FixedToolWindow,
            false,
            {{"File1", -1, Kind::FileListBox, "", 0, 0, 2535, 3015, "", 0, 0, "",
              "*.bmp;*.jpg;*.gif"}}};
}

} // namespace

const rt::FormSpec& mainFormSpec() {
    static const rt::FormSpec s = buildMainForm();
    return s;
}
const rt::FormSpec& checkFormSpec() {
    static const rt::FormSpec s = buildCheckForm();
    return s;
}
const rt::FormSpec& cardDetailFormSpec() {
    static const rt::FormSpec s = buildCardDetailForm();
    return s;
}
const rt::FormSpec& advancedDeckPropFormSpec() {
    static const rt::FormSpec s = buildAdvancedDeckPropForm();
    return s;
}
const rt::FormSpec& showCrdFormSpec() {
    static const rt::FormSpec s = buildShowCrdForm();
    return s;
}
const rt::FormSpec& treeFormSpec() {
    static const rt::FormSpec s = buildTreeForm();
    return s;
}
const rt::FormSpec& showImgListSpec() {
    static const rt::FormSpec s = buildShowImgList();
    return s;
}

void registerCatalogue() {
    for (const rt::FormSpec* s :
         {&mainFormSpec(), &checkFormSpec(), &cardDetailFormSpec(), &advancedDeckPropFormSpec(),
          &showCrdFormSpec(), &treeFormSpec(), &showImgListSpec()})
        rt::registerFormSpec(s);
}

} // namespace wizard
