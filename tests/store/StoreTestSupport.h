#pragma once

#include "store/ProfileStore.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <optional>
#include <sys/stat.h>
#include <utility>
#include <vector>

using store::FlushProfiles;
using store::ReadProfileValue;
using store::WriteProfileValue;

inline void put(const QString& file, const QByteArray& bytes) {
    QFile f(file);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    ASSERT_EQ(f.write(bytes), bytes.size());
}

inline QByteArray bytesOf(const QString& file) {
    QFile f(file);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

inline struct stat statOf(const QString& file) {
    struct stat st {};
    ::lstat(QFile::encodeName(file).constData(), &st);
    return st;
}

inline void setMode(const QString& file, mode_t mode) {
    ASSERT_EQ(::chmod(QFile::encodeName(file).constData(), mode), 0);
}

// Hidden files too: a save must leave no temporary file behind.
inline QStringList folderEntries(const QString& folder) {
    return QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
}

// A fresh folder and store, every error report kept; a test flushes its writes as a save does.
class StoreTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        batch.emplace();
        store::DropProfileCache();
        store::SetProfileWriteErrorHandler([this](const QString& file, const QString& reason) {
            errors.emplace_back(file, reason);
        });
    }

    void TearDown() override {
        store::SetProfileWriteErrorHandler(nullptr);
        store::DropProfileCache();
        batch.reset();
    }

    QString path(const QString& name) const { return dir.filePath(name); }

    // Writes one value and flushes it, the way one user action does.
    static int save(const QString& section, const QString& key, const QString& value,
                    const QString& file) {
        const int accepted = WriteProfileValue(section, key, value, file);
        FlushProfiles();
        return accepted;
    }

    QTemporaryDir dir;
    std::optional<store::WriteBatch> batch;
    std::vector<std::pair<QString, QString>> errors;
};
