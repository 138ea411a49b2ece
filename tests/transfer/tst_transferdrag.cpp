#include "opentransfer.h"

namespace {

const QString kNormal =
    "border-style: dashed; border-color: #515151; border-width: 2px;background-color: rgb(221,221,221,127);"_s;
const QString kHover =
    "border-style: dashed; border-color: #515151; border-width: 2px;background-color: rgb(249,191,000,127);"_s;

/// A drag over the page of a player with songs.
struct Dragging : OpenForPlayer
{
    Dragging() : OpenForPlayer({"My Songs/Rock/a.mid"_s, "My Songs/b.mid"_s, "loose.mid"_s}) {
        row("My Songs"_s);
        row("loose.mid"_s);
    }
    QString style() const { return child<QLabel>(page, "dropArea")->styleSheet(); }
    QStringList selected() const {
        QStringList names;
        const QModelIndexList rows = table()->selectionModel()->selectedRows();
        for (const QModelIndex &row : rows)
            names.append(row.data().toString());
        return names;
    }
    /// A point of the page: "area", "header", "empty", "elsewhere" or the name of a row.
    QPoint place(const QString &name) const {
        if (name == "area"_s)
            return overDropArea();
        if (name == "header"_s)
            return overHeader();
        if (name == "empty"_s)
            return overEmptyTable();
        return name == "elsewhere"_s ? elsewhere() : overRow(name);
    }

    Drag drag{page, fileUrls({"/tmp/song.mid"_s})};
};

} // namespace

/// What a drag does before it is dropped, with events of the kind the system sends.
class TestTransferDrag : public QObject
{
    Q_OBJECT

private slots:
    void dragIsRefusedWhileBusy() {
        Dragging open;
        QVERIFY(open.drag.enter(open.overDropArea()));
        open.page.busy = true;
        QVERIFY(!open.drag.move(open.overDropArea()));
        QCOMPARE(open.style(), kNormal);
        QVERIFY(!open.drag.drop(open.overDropArea()));
        QCOMPARE(open.told(), QStringList());
        QVERIFY(!open.drag.enter(open.overDropArea()));
    }

    void dragWithBothActionsIsACopy() {
        Dragging open;
        Drag moving(open.page, fileUrls({"/tmp/song.mid"_s}), Qt::CopyAction | Qt::MoveAction);
        QVERIFY(moving.enter(open.overDropArea()) && moving.move(open.overDropArea()));
    }

    void viewsLeaveDragsToThePage() {
        const Dragging open;
        QVERIFY(open.page.acceptDrops());
        const QList<QWidget *> children = open.page.findChildren<QWidget *>();
        QVERIFY(!children.isEmpty());
        for (const QWidget *child : children)
            QVERIFY2(!child->acceptDrops(), qPrintable(child->objectName()));
    }

    void placeUnderTheCursorDecides_data() {
        using Names = QStringList;
        const QString songs = "My Songs"_s;
        columns<QStringList, QString, QString, QStringList>("places", "style", "target", "selected");
        row("drag is let in everywhere", Names(), kNormal, "/My Songs"_s, words("loose.mid"));
        row("drop area is highlighted and means the current folder", words("area"), kHover, QString(), Names());
        row("folder row is selected and becomes the target", Names{"area"_s, songs}, kNormal, "/My Songs"_s,
            Names{songs});
        row("file row means the current folder", words("loose.mid"), kNormal, "/"_s, Names());
        row("file row after a folder row forgets the folder", Names{songs, "loose.mid"_s}, kNormal, "/"_s, Names());
        row("empty place of the table means the current folder", Names{songs, "empty"_s}, kNormal, QString(), Names());
        row("leaving the drop area", words("area away"), kNormal, QString(), Names());
        row("leaving a folder row", Names{songs, "away"_s}, kNormal, QString(), Names());
        for (const char *place : {"header", "elsewhere"}) {
            const QString there = QLatin1String(place);
            row(qPrintable("after a folder row, "_s + there), Names{songs, there}, kNormal, QString(), Names());
            row(qPrintable("drop area after "_s + there), Names{songs, there, "area"_s}, kHover, QString(), Names());
            row(qPrintable("after the drop area, "_s + there), Names{"area"_s, there}, kNormal, QString(), Names());
        }
    }

    void placeUnderTheCursorDecides() {
        QFETCH(QStringList, places);
        QFETCH(QString, style);
        QFETCH(QString, target);
        QFETCH(QStringList, selected);
        Dragging open;
        open.select(words("loose.mid"));
        open.page.dropTarget = open.player.path("My Songs"_s);
        QVERIFY(open.drag.enter(open.elsewhere()));
        for (const QString &place : qAsConst(places)) {
            if (place == "away"_s)
                open.drag.leave();
            else
                QCOMPARE(open.drag.move(open.place(place)), !words("header elsewhere").contains(place));
        }
        QCOMPARE(open.style(), style);
        QCOMPARE(open.page.dropTarget, target.isEmpty() ? target : open.player.path(target.mid(1)));
        QCOMPARE(open.selected(), selected);
    }

    void folderRowInASubFolderIsJoinedWithASlash() {
        Dragging open;
        open.enter("My Songs"_s);
        QVERIFY(open.drag.enter(open.overDropArea()));
        QVERIFY(open.drag.move(open.overRow("Rock"_s)));
        QCOMPARE(open.page.dropTarget, open.player.path("My Songs/Rock"_s));
    }

    void moveAsProposedActionIsRefused_data() {
        columns<int, int>("actions", "modifiers");
        row("move is all the source offers", int(Qt::MoveAction), int(Qt::NoModifier));
        row("move is chosen by the shift key", int(Qt::CopyAction | Qt::MoveAction), int(Qt::ShiftModifier));
        row("link", int(Qt::LinkAction), int(Qt::NoModifier));
    }

    void moveAsProposedActionIsRefused() {
        QFETCH(int, actions);
        QFETCH(int, modifiers);
        Dragging open;
        Drag moving(open.page, fileUrls({open.player.path("loose.mid"_s)}), Qt::DropActions(actions),
                    Qt::KeyboardModifiers(modifiers));
        moving.enter(open.overDropArea());
        QVERIFY(!moving.move(open.overDropArea()));
        QVERIFY(!moving.move(open.overRow("My Songs"_s)));
        QCOMPARE(open.style(), kNormal);
        QCOMPARE(open.page.dropTarget, QString());
        const QStringList before = open.player.files();
        open.recorder.clear();
        QVERIFY(!moving.drop(open.overDropArea()));
        QCOMPARE(open.told(), QStringList());
        QCOMPARE(open.player.files(), before);
    }

    void dragBeforeThePcButtonFindsNoPlaceToDrop() {
        Dragging open;
        open.page.prepare(open.player.root());
        QVERIFY(open.drag.enter(open.page.rect().center()));
        for (int y = 5; y < open.page.height(); y += 40)
            QVERIFY(!open.drag.move(QPoint(open.page.width() / 2, y)));
    }
};

PAGE_TEST_MAIN(TestTransferDrag)
#include "tst_transferdrag.moc"
