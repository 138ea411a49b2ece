#pragma once

#include <QFileSystemModel>
#include <QLocale>

/// A model of the file system that writes sizes and dates as people of one language do: the date short and without
/// seconds ("22.11.26 11:42"), the size with one decimal. What it shows is known from the listing: no file is asked
/// again.
class LocalFiles : public QFileSystemModel
{
    Q_OBJECT

public:
    /// The columns of a model of the file system, in their order.
    enum Column
    {
        NameColumn,
        SizeColumn,
        TypeColumn,
        DateColumn
    };

    explicit LocalFiles(QObject *parent = nullptr); ///< in the program's default language

    /// The language that sizes and dates are written in from now on. A view must be told to paint again.
    void setLocale(const QLocale &locale) { m_locale = locale; }
    /// As the base class; size and date as texts of the language, all of them beginning where their column's title
    /// does.
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

    /// @p bytes as "39 Bytes" or "1,2 MB" in the language of @p locale.
    static QString sizeText(qint64 bytes, const QLocale &locale);
    /// @p time as "22.11.26 11:42" in the language of @p locale.
    static QString dateText(const QDateTime &time, const QLocale &locale);

private:
    QLocale m_locale;
};
