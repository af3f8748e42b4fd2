#pragma once
// The image picker: the images of the game's directory; a double click chooses.

#include "runtime/Form.h"

class ShowImgList : public rt::Form {
    Q_OBJECT
public:
    static constexpr const char* Name = "ShowImgList";
    ShowImgList();
    void Form_Load() override;
    void File1_DblClick();
    rt::FileListBox* File1 = nullptr;
};
