#include "logs/TablePager.h"

#include <algorithm>

void TablePager::setRowCount(int rows) {
    *this = TablePager();
    rowCount_ = rows;
    end_ = rows;
}

void TablePager::setPageRows(int rows) {
    if (rowCount_ == 0)
        return;
    pageRows_ = rows;
    currentPage_ = FirstPage;
    if (rows < 1) {
        pageCount_ = 1;
        begin_ = 0;
        end_ = rowCount_;
        return;
    }
    pageCount_ = rowCount_ / rows + (rowCount_ % rows != 0 ? 1 : 0);
    showPage(FirstPage);
}

void TablePager::showPage(int page) {
    if (rowCount_ == 0 || pageRows_ < 1 || page < FirstPage || page > pageCount_)
        return;
    currentPage_ = page;
    begin_ = (page - 1) * pageRows_;
    end_ = begin_ + std::min(pageRows_, rowCount_ - begin_);
}
