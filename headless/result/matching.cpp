#include "headless/result/matching.h"

#include <cstddef>
#include <limits>

namespace zn::headless {

namespace {

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

// The assignment of least cost; needs at least as many columns as rows. Rows and columns are counted from 1 here;
// column 0 stands for "no column" and holds the row that still needs a partner.
class Assignment {
public:
    Assignment(const std::vector<double>& cost, int rows, int columns)
        : cost_(cost), columns_(columns), rowPrice_(at(rows + 1)), columnPrice_(at(columns + 1)),
          rowOf_(at(columns + 1)) {
        for (int row = 1; row <= rows; ++row) insert(row);
    }

    int rowOf(int column) const { return rowOf_[at(column)]; }

private:
    double reduced(int row, int column) const {
        return cost_[at(row - 1) * at(columns_) + at(column - 1)] - rowPrice_[at(row)] - columnPrice_[at(column)];
    }

    void insert(int row) {
        std::vector<double> distance(at(columns_ + 1), std::numeric_limits<double>::infinity());
        std::vector<bool> reached(at(columns_ + 1));
        std::vector<int> cameFrom(at(columns_ + 1));
        rowOf_[0] = row;
        int column = 0;
        do { // grow the tree of shortest paths until it reaches a free column
            reached[at(column)] = true;
            const int current = rowOf_[at(column)];
            int nearest = 0;
            for (int next = 1; next <= columns_; ++next) {
                if (reached[at(next)]) continue;
                const double length = reduced(current, next);
                if (length < distance[at(next)]) {
                    distance[at(next)] = length;
                    cameFrom[at(next)] = column;
                }
                if (nearest == 0 || distance[at(next)] < distance[at(nearest)]) nearest = next;
            }
            raisePrices(reached, distance, distance[at(nearest)]);
            column = nearest;
        } while (rowOf_[at(column)] != 0);
        for (; column != 0; column = cameFrom[at(column)]) rowOf_[at(column)] = rowOf_[at(cameFrom[at(column)])];
    }

    void raisePrices(const std::vector<bool>& reached, std::vector<double>& distance, double step) {
        for (int column = 0; column <= columns_; ++column) {
            if (reached[at(column)]) {
                rowPrice_[at(rowOf_[at(column)])] += step;
                columnPrice_[at(column)] -= step;
            } else {
                distance[at(column)] -= step;
            }
        }
    }

    const std::vector<double>& cost_;
    int columns_;
    std::vector<double> rowPrice_;
    std::vector<double> columnPrice_;
    std::vector<int> rowOf_;
};

} // namespace

std::vector<int> bestMatching(const std::vector<double>& value, int rows, int columns) {
    const bool tall = rows > columns;
    std::vector<double> cost(value.size());
    for (std::size_t row = 0; row < at(rows); ++row) {
        for (std::size_t column = 0; column < at(columns); ++column) {
            const double here = value[row * at(columns) + column];
            cost[tall ? column * at(rows) + row : row * at(columns) + column] = -here;
        }
    }
    const int few = tall ? columns : rows;
    const int many = tall ? rows : columns;
    const Assignment assignment(cost, few, many);
    std::vector<int> result(at(rows), -1);
    for (int other = 1; other <= many; ++other) {
        const int partner = assignment.rowOf(other);
        if (partner == 0) continue;
        result[at(tall ? other - 1 : partner - 1)] = tall ? partner - 1 : other - 1;
    }
    return result;
}

} // namespace zn::headless
