#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

/// Puts a new file in the place of what is there.
inline void writeText(const QString& path, const QByteArray& text) {
    QDir().mkpath(QFileInfo(path).path());
    QFile::remove(path);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
}

inline QByteArray textOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}
