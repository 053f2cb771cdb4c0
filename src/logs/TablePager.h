#pragma once

/// The pages of a table whose rows are all there: which of them are shown.
///
/// Pages are counted from 1. Invariant: with rows and a positive number of rows a page, the current page exists.
class TablePager final {
public:
    /// A new table. All of its rows are shown until the rows of a page are set.
    void setRowCount(int rows);

    /// Divides the rows into pages of `rows` and shows the first; less than 1 shows all on one page. Without rows
    /// nothing changes.
    void setPageRows(int rows);

    /// Shows a page; one that does not exist changes nothing.
    void showPage(int page);
    void showFirst() { showPage(FirstPage); }
    void showPrevious() { showPage(currentPage_ - 1); }
    void showNext() { showPage(currentPage_ + 1); }
    void showLast() { showPage(pageCount_); }

    int rowCount() const { return rowCount_; }
    int pageRows() const { return pageRows_; } ///< less than 1: all
    int currentPage() const { return currentPage_; }
    int pageCount() const { return pageCount_; }
    /// The rows that are shown: from the first to the one before the last.
    int beginRow() const { return begin_; }
    int endRow() const { return end_; }

private:
    static constexpr int FirstPage = 1;

    int rowCount_ = 0;
    int pageRows_ = 0;
    int currentPage_ = FirstPage;
    int pageCount_ = 1;
    int begin_ = 0;
    int end_ = 0;
};
