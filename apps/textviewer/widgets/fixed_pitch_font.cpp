#include "apps/textviewer/widgets/fixed_pitch_font.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QStringList>

namespace bm::textviewer {

namespace {

QStringList fixedPitchFamilies() {
    QStringList fixed;
    for (const QString& family : QFontDatabase::families())
        if (QFontDatabase::isFixedPitch(family)) fixed << family;
    return fixed;
}

}  // namespace

bool anyFixedPitchFamilyInstalled() { return !fixedPitchFamilies().isEmpty(); }

QFont fixedPitchFont() {
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    if (QFontInfo(font).fixedPitch()) return font;
    font.setStyleHint(QFont::TypeWriter, QFont::PreferMatch);
    if (QFontInfo(font).fixedPitch()) return font;
    for (const QString& family : fixedPitchFamilies()) {
        QFont candidate = font;
        candidate.setFamilies({family});
        if (QFontInfo(candidate).fixedPitch()) return candidate;
    }
    return QFontDatabase::systemFont(QFontDatabase::FixedFont);
}

}  // namespace bm::textviewer
