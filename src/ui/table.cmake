# The tables' rows, models and views.
vantorel_add_library(vantorel_ui_table GUI
  LINKS vantorel_ui_controls vantorel_engine
  SOURCES
    DefaultTableRowView.cpp
    MiddleElision.cpp
    QueueTable.cpp
    QueueTableModel.cpp
    RowPainter.cpp
    RowTexts.cpp
    RowViewStore.cpp
    TableCard.cpp
    TableHead.cpp
    TableLayout.cpp
)
