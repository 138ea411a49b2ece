#pragma once

#include <QVBoxLayout>

/// The column in which a page lays out what it shows. It asks for no more height than it needs at least: what can
/// shrink (gaps, pictures) has done so before the window scrolls.
class PageLayout : public QVBoxLayout
{
    Q_OBJECT

public:
    using QVBoxLayout::QVBoxLayout;

    int heightForWidth(int width) const override; ///< the least in which everything is seen at @p width; -1 for any

private:
    mutable bool m_asking = false; ///< while Qt computes both heights
};
