#include <gtest/gtest.h>

#include <QLineEdit>
#include <QListWidget>
#include <QTabWidget>
#include <QTextBrowser>
#include <QTreeWidget>

#include "testing/qt_test_support.h"
#include "shell/widgets/help_viewer.h"
#include "testing/test_paths.h"

using namespace bm;

namespace {
std::string shippedHelp() { return (testkit::sourceDir() / "data" / "orvahelp.hlp").string(); }
}  // namespace

TEST(HelpViewer, ContentsTreeIndexAndTopics) {
    HelpViewer viewer;
    ASSERT_TRUE(viewer.load(shippedHelp()));
    auto* tree = viewer.findChild<QTreeWidget*>("helpContents");
    ASSERT_EQ(tree->topLevelItemCount(), 1);
    EXPECT_EQ(tree->topLevelItem(0)->text(0), "Ground Water Model Help");
    EXPECT_GE(tree->topLevelItem(0)->childCount(), 10);

    ASSERT_TRUE(viewer.showTopic(3100));
    auto* page = viewer.findChild<QTextBrowser*>("helpPage");
    EXPECT_TRUE(page->toPlainText().contains("One-dimensional saturated model"));
    EXPECT_TRUE(page->toPlainText().contains("Cauchy"));
    EXPECT_FALSE(viewer.showTopic(1));
    EXPECT_EQ(viewer.currentTopic(), 3100);

    viewer.showIndex();
    EXPECT_EQ(viewer.findChild<QTabWidget*>("helpTabs")->currentIndex(), 1);
    viewer.findChild<QLineEdit*>("helpIndexSearch")->setText("monte");
    auto* index = viewer.findChild<QListWidget*>("helpIndex");
    ASSERT_GT(index->count(), 0);
    for (int i = 0; i < index->count(); ++i) EXPECT_TRUE(index->item(i)->text().startsWith("Monte", Qt::CaseInsensitive));
    emit index->itemClicked(index->item(0));
    EXPECT_EQ(viewer.currentTopic(), 3500);

    // A link inside a page leads to its topic.
    emit page->anchorClicked(QUrl("topic:3010"));
    EXPECT_EQ(viewer.currentTopic(), 3010);
    EXPECT_TRUE(page->toPlainText().contains("0:100:1:50"));
}

TEST(HelpViewer, AFileThatIsNotHelpLeavesTheViewerEmpty) {
    testkit::TempDir dir;
    testkit::writeFileBytes(dir.file("orvahelp.hlp"), std::string("\x89PNG garbage\r\n", 14));
    HelpViewer viewer;
    EXPECT_FALSE(viewer.load(dir.file("orvahelp.hlp")));
    EXPECT_FALSE(viewer.showTopic(3100));
    EXPECT_EQ(viewer.findChild<QTreeWidget*>("helpContents")->topLevelItemCount(), 0);
}
