#pragma once

#include "store/ProfileStore.h"

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <optional>
#include <sys/stat.h>
#include <utility>
#include <vector>

// A fresh folder and a fresh store for every test, with every error report kept.
// Writes are held in a batch for the length of a test, so that a test says when
// they reach the disk with FlushProfiles, as a save does at its end.
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

    static void put(const QString& file, const QByteArray& bytes) {
        QFile f(file);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        ASSERT_EQ(f.write(bytes), bytes.size());
    }

    static QByteArray bytesOf(const QString& file) {
        QFile f(file);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }

    static struct stat statOf(const QString& file) {
        struct stat st {};
        ::lstat(QFile::encodeName(file).constData(), &st);
        return st;
    }

    // Writes one value and flushes it, the way one user action does.
    static int save(const QString& section, const QString& key, const QString& value,
                    const QString& file) {
        const int accepted = store::WriteProfileValue(section, key, value, file);
        store::FlushProfiles();
        return accepted;
    }

    QTemporaryDir dir;
    std::optional<store::WriteBatch> batch;
    std::vector<std::pair<QString, QString>> errors;
};
