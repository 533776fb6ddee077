// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/controls/FlexGrid.h"
#include "store/clsPestMONNew.h"

#include <QStringView>

#include <array>
#include <span>

/// A text column of the list. A width of 0 (twips) hides it, an empty field leaves it empty.
struct AnalysisTextColumn {
    QStringView header;
    QStringView field;
    int width;
    controls::CellAlignment alignment;
};

/// One of the values: its column in the list, its caption in the panel, its field in the store.
struct AnalysisValueColumn {
    QStringView header;
    QStringView label;
    QStringView field;
};

/// What the second entry of the panel's first line takes.
enum class AnalysisSecondEntry { None, Part, Depth };

/// All that differs between the five kinds of analysis. It drives list, panel, save, delete and export.
struct AnalysisKind {
    using Key = clsPestMONNew::Key;
    using Status = clsPestMONNew::Status;
    using List = dao::Recordset (clsPestMONNew::*)(basic::SerialDate from, basic::SerialDate to, Key planting);
    using Write = Status (*)(clsPestMONNew &store, Key &key, Key planting, const AnalysisRecord &record);
    using Remove = Status (clsPestMONNew::*)(Key &key);

    /// The Tag that the menu sets on the screen.
    QStringView mode;
    QStringView formCaption;
    QStringView frameCaption;
    /// Its name in the status line.
    QStringView name;
    /// Of its menu picture.
    QStringView icon;

    QStringView keyField;
    QStringView dateField;
    AnalysisTextColumn partOrDepth;
    AnalysisTextColumn season;
    /// At most eleven; the n-th belongs to the n-th box of the panel.
    std::span<const AnalysisValueColumn> values;
    int valueWidth;

    /// Captions of the panel, with their access keys.
    QStringView secondCaption;
    AnalysisSecondEntry secondEntry;
    std::span<const QStringView> parts;
    QStringView fourthCaption;
    /// Without any the fourth entry is hidden.
    std::span<const QStringView> seasons;
    /// Twips from one box of the panel to the next.
    int boxStep;

    QStringView sheetTitle;
    QStringView sheetHeading;

    List list;
    Write add;
    Write save;
    /// Null where the screen's Delete removes nothing.
    Remove remove;
};

/// The kind of a mode; null for any other text.
const AnalysisKind *analysisKind(QStringView mode);
std::span<const AnalysisKind> analysisKinds();

/// Columns of the list that are the same in all kinds.
enum AnalysisColumn : int {
    AnalysisKeyCol = 0,
    PlantingCol,
    BlockCol,
    CultivarCol,
    DateCol,
    PartOrDepthCol,
    SeasonCol,
    FirstValueCol,
    LastValueCol = 17,
    GroupCol,
    TypeCol,
    VarietyCol,
    AnalysisColumnCount
};
inline constexpr std::size_t AnalysisBoxes = LastValueCol - FirstValueCol + 1;

/// The values of a record in the order of the boxes.
inline constexpr std::array<float AnalysisRecord::*, AnalysisBoxes> AnalysisValues{
    &AnalysisRecord::N,  &AnalysisRecord::P,  &AnalysisRecord::K,  &AnalysisRecord::Ca, &AnalysisRecord::Mg, &AnalysisRecord::Na,
    &AnalysisRecord::Mn, &AnalysisRecord::Fe, &AnalysisRecord::Cu, &AnalysisRecord::Zn, &AnalysisRecord::B};
