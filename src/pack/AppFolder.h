#pragma once
// The application folder: where the games are, beside the program as long as
// the program's own folder can be written. An installed program's cannot, so
// each user then gets a folder of their own, set up at first start with what
// the package ships (the sample game, its images and the help notes).

#include <QString>

namespace pack {

// The folder to work in for a program whose executable lies in `exeDir`;
// `shared` is where the package's files are ("" for ../share/zavik-wizard
// from the executable). The user's folder is taken when those files are there
// or `exeDir` cannot be written; it is made and filled at its first use.
QString applicationFolder(const QString& exeDir, const QString& shared = {});

} // namespace pack
