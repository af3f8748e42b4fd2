#include "wizard/GamePath.h"

#include "runtime/FileSystem.h"
#include "runtime/Runtime.h"
#include "wizard/MainForm.h"

namespace Globals {

QString GameFilePath() {
    const MainForm* form = mainForm();
    const QString name = form ? form->NameTXT->Text() : QString();
    return rt::AppPath() + QLatin1Char('/') + name + QStringLiteral(".game");
}

bool FileExists(const QString& path) {
    if (path.isEmpty())
        return false;
    return !rt::Dir(path, rt::vbNormal).isEmpty();
}

} // namespace Globals
