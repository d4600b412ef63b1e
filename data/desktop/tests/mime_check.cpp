// Tells the file kind the desktop's shared MIME database gives a file, as a
// file manager asks it (the database is found through XDG_DATA_DIRS).
// Usage: brenmoor_mime_check FILE -> prints the MIME type name.

#include <QCoreApplication>
#include <QMimeDatabase>
#include <cstdio>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    if (argc != 2) return 2;
    const QMimeType type = QMimeDatabase().mimeTypeForFile(QString::fromLocal8Bit(argv[1]));
    std::printf("%s\n", qPrintable(type.name()));
    return type.isValid() ? 0 : 1;
}
