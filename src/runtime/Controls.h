#pragma once
// The kinds of control the wizard's forms use.

#include "runtime/Control.h"

#include <QImage>
#include <QStringList>

class QLineEdit;
class QPlainTextEdit;
class QComboBox;
class QListWidget;
class QCheckBox;
class QLabel;
class QPushButton;
class QGroupBox;

namespace rt {

// The text after one typed key: Backspace takes the last character, Enter
// adds a line break only where the box has lines, other keys are appended.
QString textAfterKey(const QString& text, int ascii, bool multiLine);

class TextBox : public Control {
public:
    TextBox(Form* form, const ControlSpec& spec, QWidget* parent);
    QString Text() const { return m_text; }
    // Runs Change when the text differs.
    void setText(const QString& text);
    bool multiLine() const { return m_multi != nullptr; }
    void userEdit(const QString& text) override;

protected:
    void applyKey(int ascii) override;

private:
    void showText();
    void takeWidgetText();
    QString m_text; // as assigned: a multi-line text keeps its CR LF
    QLineEdit* m_line = nullptr;
    QPlainTextEdit* m_multi = nullptr;
};

class ListControl : public Control {
public:
    using Control::Control;
    virtual void AddItem(const QString& item) = 0;
    virtual void Clear() = 0;
    virtual void RemoveItem(int index) = 0;
    virtual QString List(int index) const = 0;
    virtual int ListCount() const = 0;
    virtual int ListIndex() const = 0;
    virtual void setListIndex(int index) = 0;
    // The user clicks a row: it becomes the current one, then Click.
    virtual void userPick(int row);
    // ListIndex, ListCount and List(i), which every list has.
};

class ComboBox : public ListControl {
public:
    ComboBox(Form* form, const ControlSpec& spec, QWidget* parent);
    void AddItem(const QString& item) override;
    // Empties the list and the edit field.
    void Clear() override;
    void RemoveItem(int index) override;
    QString List(int index) const override;
    int ListCount() const override;
    int ListIndex() const override;
    // Runs Click, as the run time does for a combo box.
    void setListIndex(int index) override;
    QString Text() const;
    void setText(const QString& text);
    bool editable() const;
    void userPick(int row) override;
    void userEdit(const QString& text) override;

protected:
    void applyKey(int ascii) override;

private:
    QComboBox* m_box;
};

class ListBox : public ListControl {
public:
    ListBox(Form* form, const ControlSpec& spec, QWidget* parent);
    void AddItem(const QString& item) override;
    void Clear() override;
    void RemoveItem(int index) override;
    QString List(int index) const override;
    void setList(int index, const QString& text);
    int ListCount() const override;
    int ListIndex() const override;
    void setListIndex(int index) override;
    qint32 ItemData(int index) const;
    void setItemData(int index, qint32 value);
    bool Selected(int index) const;
    void setSelected(int index, bool selected);
    bool multiSelect() const { return m_multi; }
    QString Text() const;
    void userPick(int row) override;

protected:
    QListWidget* list() const { return m_list; }

private:
    QListWidget* m_list;
    bool m_multi;
};

class FileListBox : public ListBox {
public:
    FileListBox(Form* form, const ControlSpec& spec, QWidget* parent);
    QString Path() const { return m_path; }
    // Lists the names of the folder that match Pattern; a folder that cannot
    // be read gives an empty list.
    void setPath(const QString& path);
    QString Pattern() const { return m_pattern; }
    void setPattern(const QString& pattern);
    void Refresh();

private:
    QString m_path;
    QString m_pattern;
};

// A control whose text is its Caption.
class CaptionedControl : public Control {
public:
    using Control::Control;
    QString Caption() const { return m_caption; }
    void setCaption(const QString& caption);

protected:
    virtual void showCaption(const QString& caption) = 0;

private:
    QString m_caption;
};

class Label : public CaptionedControl {
public:
    Label(Form* form, const ControlSpec& spec, QWidget* parent);
    bool canFocus() const override { return false; }

private:
    void showCaption(const QString& caption) override;
    QLabel* m_label;
};

class CommandButton : public CaptionedControl {
public:
    CommandButton(Form* form, const ControlSpec& spec, QWidget* parent);

private:
    void showCaption(const QString& caption) override;
    QPushButton* m_button;
};

class Frame : public CaptionedControl {
public:
    Frame(Form* form, const ControlSpec& spec, QWidget* parent);
    bool canFocus() const override { return false; }

private:
    void showCaption(const QString& caption) override;
    QGroupBox* m_group = nullptr;
};

class CheckBox : public CaptionedControl {
public:
    CheckBox(Form* form, const ControlSpec& spec, QWidget* parent);
    int Value() const { return m_value; }
    // Runs Click when the value changes.
    void setValue(int value);
    void userClick() override;

private:
    void showCaption(const QString& caption) override;
    QCheckBox* m_box;
    int m_value = 0;
};

class PictureBox : public Control {
public:
    PictureBox(Form* form, const ControlSpec& spec, QWidget* parent);
    void Cls();
    // Writes a line at CurrentX and steps down.
    void Print(const QString& text);
    int CurrentX() const { return m_currentX; }
    void setCurrentX(int twips) { m_currentX = twips; }
    int CurrentY() const { return m_currentY; }
    void setCurrentY(int twips) { m_currentY = twips; }
    int TextWidth(const QString& text) const;
    int TextHeight(const QString& text) const;
    int ScaleWidth() const;
    // A picture from LoadPicture; with AutoSize the box takes its size.
    void setPicture(const QImage& image, const QString& path);
    QString Picture() const { return m_picturePath; }
    QString Printed() const { return m_printed.join(QLatin1Char('\n')); }

private:
    friend class PictureWidget;
    struct Line {
        int x, y;
        QString text;
    };
    QWidget* m_canvas;
    bool m_autoSize;
    QImage m_image;
    QString m_picturePath;
    std::vector<Line> m_lines;
    QStringList m_printed;
    int m_currentX = 0;
    int m_currentY = 0;
};

// The open-file dialog control: no visible part of its own.
class CommonDialog : public Control {
public:
    CommonDialog(Form* form, const ControlSpec& spec, QWidget* parent);
    QString Filter() const { return m_filter; }
    void setFilter(const QString& filter) { m_filter = filter; }
    void ShowOpen();
    QString FileName() const { return m_fileName; }
    QString FileTitle() const; // the chosen name without its folder
    bool canFocus() const override { return false; }

private:
    QString m_filter;
    QString m_fileName;
};

} // namespace rt
