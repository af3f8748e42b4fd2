#pragma once
// The findings of the check before a save. Any key closes it.

#include "runtime/Form.h"

class CheckForm : public rt::Form {
    Q_OBJECT
public:
    static constexpr const char* Name = "CheckForm";
    CheckForm();
    void Form_KeyPress(int& KeyAscii) override;
    rt::TextBox* Text1 = nullptr;
};
