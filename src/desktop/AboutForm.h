#pragma once
// The About box: the program's version and the folder it works in, which is
// where its games are saved.

#include "runtime/Form.h"

class AboutForm : public rt::Form {
    Q_OBJECT
public:
    static constexpr const char* Name = "AboutForm";
    static const rt::FormSpec& formSpec();
    AboutForm();
    void Form_Load() override;
    void Form_KeyPress(int& KeyAscii) override;

    rt::Label* title = nullptr;
    rt::Label* version = nullptr;
    rt::Label* folder = nullptr;
    rt::CommandButton* OkBtn = nullptr;
};
