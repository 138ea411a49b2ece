#include "opentransfer.h"
#include "transfer/foldertree.h"

#include <QHeaderView>
#include <QScrollBar>

/// How wide the one column of the tree is, and how high the line that names its chosen folder.
class TestFolderTree : public QObject
{
    Q_OBJECT

    static int columnWidth(const OpenForPlayer &open) { return open.tree()->header()->sectionSize(0); }
    static bool isFilled(const OpenForPlayer &open) { return columnWidth(open) == open.tree()->viewport()->width(); }

private slots:
    void chosenFolderIsMarkedAcrossTheWholeTree() {
        OpenForPlayer open({"My Songs/a.mid"_s});
        QTRY_VERIFY(isFilled(open));
        open.page.resize(open.page.width() + 200, open.page.height());
        QTRY_VERIFY(isFilled(open));
        open.page.resize(open.page.width() - 200, open.page.height());
        QTRY_VERIFY(isFilled(open));
        QCOMPARE(open.tree()->horizontalScrollBar()->maximum(), 0);
    }

    void lineOfTheFolderTakesNoRoomWhileItIsEmpty() {
        OpenForPlayer open({"My Songs/a.mid"_s});
        const auto *line = child<QLabel>(open.page, "labelFolder");
        QTRY_COMPARE(line->height(), 0);
        open.page.on_treeView_clicked(open.tree()->model()->index(0, 0, open.top()));
        QTRY_VERIFY(line->height() >= line->fontMetrics().height());
    }

    void nameThatIsWiderThanTheTreeCanBeScrolledTo() {
        const QString name(120, QLatin1Char('W'));
        OpenForPlayer open({name + "/a.mid"_s});
        QTRY_VERIFY(open.tree()->model()->rowCount(open.top()) > 0);
        QTRY_VERIFY(columnWidth(open) > open.tree()->fontMetrics().horizontalAdvance(name));
        QTRY_VERIFY(open.tree()->horizontalScrollBar()->maximum() > 0);
        open.tree()->collapse(open.top());
        QTRY_VERIFY(isFilled(open));
    }
};

PAGE_TEST_MAIN(TestFolderTree)
#include "tst_foldertree.moc"
