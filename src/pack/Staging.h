#pragma once
// Where an unpack puts what it extracts until everything has succeeded: a
// hidden folder inside the target, so that the final renames stay on one file
// system. Its name says what it is, and the next unpack finishes or removes
// what a killed one left.

#include <QString>
#include <QStringList>

namespace pack {

inline constexpr char StagingPrefix[] = ".zavik-unpack-";

class Staging {
public:
    ~Staging(); // removes whatever is still staged
    Staging(const Staging&) = delete;
    Staging& operator=(const Staging&) = delete;

    // Null with `error` set when the target cannot be written.
    static Staging* create(const QString& target, QString& error);

    // A new file for the game (`image` false) or one of its images; -1 with
    // `error` set on failure. The caller closes it.
    int createFile(bool image, const QString& name, QString& error);
    QString gamePath() const; // the staged game, for the store
    int targetFd() const { return target_; }
    // Opens a staged image (or the game, name empty) for reading; -1 when absent.
    int openStaged(const QString& name) const;
    // Drops a staged image that the target already holds as it is.
    void drop(const QString& name);

    // Puts the game and its images in place under these names: first a note
    // of what to do, then the renames, so that a kill in between is finished
    // by the next unpack. Gives the reason on failure.
    QString commit(const QString& gameName, const QString& folder);

private:
    Staging() = default;
    QString targetPath_;
    QByteArray name_;
    int target_ = -1;
    int self_ = -1;
    int images_ = -1;
};

// Finishes each unpack into `target` that had reached its renames and removes
// what any other left; the names of the games so finished.
QStringList recoverLeftovers(const QString& target);

// The content of `a` and `b` (open files) is the same.
bool sameContent(int a, int b);

} // namespace pack
