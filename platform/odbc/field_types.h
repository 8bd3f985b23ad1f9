// The types of a result's columns: their numbers in ADO, and the form in which their values are asked for.
#pragma once

#include "odbc/api.h"

namespace brenvik::odbc {

/// What the driver says about a column.
struct ColumnType {
    SQLSMALLINT type = SQL_UNKNOWN_TYPE;
    bool isUnsigned = false;
    /// A number of fixed precision and scale, as money is.
    bool isMoney = false;
};

/// The number in ADO. Types that ADO doesn't know, and the spans of time, count as text (202).
int AdoTypeNumber(const ColumnType& column);

enum class ValueForm { Text, Number, Switch, Bytes };

/// How a value of the column is asked for. Dates, times and decimal numbers of money and of any precision
/// come as the driver writes them, or as numbers.
ValueForm ValueFormOf(SQLSMALLINT type);

}  // namespace brenvik::odbc
