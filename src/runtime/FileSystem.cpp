#include "runtime/FileSystem.h"

#include <QDir>
#include <QFileInfo>
#include <QImageReader>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <sys/stat.h>

namespace rt {
namespace {

QStringList g_dirResults;
qsizetype g_dirNext = 0;

bool isWild(const QString& s) {
    return s.contains(QLatin1Char('*')) || s.contains(QLatin1Char('?'));
}

QChar fold(QChar c) {
    const char16_t u = c.unicode();
    return (u >= 'A' && u <= 'Z') ? QChar(u + 32) : c;
}

bool matchAt(const QString& name, qsizetype i, const QString& pat, qsizetype j) {
    while (j < pat.size()) {
        const QChar p = pat.at(j);
        if (p == QLatin1Char('*')) {
            while (j < pat.size() && pat.at(j) == QLatin1Char('*'))
                ++j;
            if (j == pat.size())
                return true;
            for (qsizetype k = i; k <= name.size(); ++k)
                if (matchAt(name, k, pat, j))
                    return true;
            return false;
        }
        if (i >= name.size())
            return false;
        if (p != QLatin1Char('?') && fold(p) != fold(name.at(i)))
            return false;
        ++i;
        ++j;
    }
    return i == name.size();
}

struct Entry {
    QString name;
    bool isDir;
};

// The entries of a folder, as the operating system has them. The kind comes
// from the directory itself where it can, so that a folder of thousands of
// images lists without a stat for each.
std::vector<Entry> entries(const QString& folder, bool withDirs) {
    std::vector<Entry> out;
    const QByteArray native = QFile::encodeName(folder.isEmpty() ? QStringLiteral("/") : folder);
    DIR* dir = ::opendir(native.constData());
    if (!dir)
        return out;
    while (const dirent* e = ::readdir(dir)) {
        const char* name = e->d_name;
        if (std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0)
            continue;
        bool isDir = e->d_type == DT_DIR;
        bool isFile = e->d_type == DT_REG;
        if (e->d_type != DT_DIR && e->d_type != DT_REG) {
            // A link, or a file system that does not say: what it leads to counts.
            struct stat st {};
            if (::fstatat(::dirfd(dir), name, &st, 0) == 0) {
                isDir = S_ISDIR(st.st_mode);
                isFile = S_ISREG(st.st_mode);
            }
        }
        if (isFile || (isDir && withDirs))
            out.push_back({QFile::decodeName(name), isDir});
    }
    ::closedir(dir);
    if (withDirs) {
        out.push_back({QStringLiteral("."), true});
        out.push_back({QStringLiteral(".."), true});
    }
    return out;
}

// Sorting a large folder compares each name many times: each is put in
// capitals once.
void sortNames(QStringList& names) {
    std::vector<std::pair<QString, QString>> keyed;
    keyed.reserve(static_cast<size_t>(names.size()));
    for (QString& name : names) {
        QString upper = name.toUpper();
        keyed.emplace_back(std::move(upper), std::move(name));
    }
    std::sort(keyed.begin(), keyed.end(), [](const auto& a, const auto& b) {
        const int c = a.first.compare(b.first);
        return c != 0 ? c < 0 : a.second < b.second;
    });
    names.clear();
    for (auto& [upper, name] : keyed)
        names.append(std::move(name));
}

void splitSpec(const QString& spec, QString& folder, QString& pattern) {
    const qsizetype slash =
        std::max(spec.lastIndexOf(QLatin1Char('/')), spec.lastIndexOf(QLatin1Char('\\')));
    if (slash < 0) {
        folder = QStringLiteral(".");
        pattern = spec;
    } else {
        folder = spec.left(slash);
        if (folder.isEmpty())
            folder = QStringLiteral("/");
        pattern = spec.mid(slash + 1);
    }
}

} // namespace

bool matchesPattern(const QString& name, const QString& pattern) {
    return matchAt(name, 0, pattern, 0);
}

// Windows compares names in capitals, so "_" and the other signs between "Z"
// and "a" come after the letters, not before them.
bool nameLess(const QString& a, const QString& b) {
    const int c = a.toUpper().compare(b.toUpper());
    return c != 0 ? c < 0 : a < b;
}

QString Dir(const QString& spec, int attributes) {
    g_dirResults.clear();
    g_dirNext = 0;
    QString folder, pattern;
    splitSpec(spec, folder, pattern);
    const bool withDirs = attributes & vbDirectory;
    if (pattern.isEmpty())
        pattern = QStringLiteral("*");
    // A name without wildcards names one entry, and the file system that will
    // open it tells names apart by case.
    const bool wild = isWild(pattern);
    for (const Entry& e : entries(folder, withDirs)) {
        if (wild ? !matchesPattern(e.name, pattern) : e.name != pattern)
            continue;
        g_dirResults.append(e.name);
    }
    sortNames(g_dirResults);
    // The dot entries lead, as a Windows file system lists them.
    if (withDirs) {
        std::stable_partition(g_dirResults.begin(), g_dirResults.end(), [](const QString& n) {
            return n == QLatin1String(".") || n == QLatin1String("..");
        });
    }
    return Dir();
}

QString Dir() {
    if (g_dirNext >= g_dirResults.size())
        return QString();
    return g_dirResults.at(g_dirNext++);
}

int GetAttr(const QString& path) {
    struct stat st {};
    if (::stat(QFile::encodeName(path).constData(), &st) != 0)
        return -1;
    int attr = 0;
    if (S_ISDIR(st.st_mode))
        attr |= vbDirectory;
    if (!(st.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)))
        attr |= vbReadOnly;
    return attr;
}

bool MkDir(const QString& path, QString* reason) {
    if (::mkdir(QFile::encodeName(path).constData(), 0777) == 0)
        return true;
    if (reason)
        *reason = QString::fromLocal8Bit(std::strerror(errno));
    return false;
}

QStringList listFiles(const QString& folder, const QString& patterns) {
    QStringList out;
    const QStringList pats = patterns.split(QLatin1Char(';'), Qt::SkipEmptyParts);
    for (const Entry& e : entries(folder, false)) {
        for (const QString& p : pats) {
            if (matchesPattern(e.name, p.trimmed())) {
                out.append(e.name);
                break;
            }
        }
    }
    sortNames(out);
    return out;
}

QImage LoadPicture(const QString& path) {
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    return reader.read();
}

} // namespace rt
