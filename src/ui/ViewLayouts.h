#pragma once

#include "ui/ViewRuler.h"

#include <QRect>

#include <array>

/// Where the elements of each view stand on its canvas.
///
/// Thread: pure
/// Units:  logical pixels

struct DropLayout
{
    QRect zone;
    QRect image;
    QRect heading;
    QRect sentence;
    QRect button;
    QRect hint;
    QRect method;

    /// `drag` goes from 0, at rest, to 1: files hang over the window. Image and words stand lower
    /// then, where button and hint have been.
    static DropLayout of(const ViewRuler &ruler, double drag = 0);
};

struct ReadyLayout
{
    QRect count;
    QRect folders;
    QRect size;
    QRect work;
    QRect table;
    QRect methodLabel;
    QRect passesLabel;
    QRect selector;
    QRect passStrip;
    QRect description;
    QRect caution;
    QRect line;
    QRect warning;
    QRect start;

    static ReadyLayout of(const ViewRuler &ruler);
};

struct ErasingLayout
{
    QRect icon;
    QRect percent;
    QRect amount;
    QRect remaining;
    QRect remainingLabel;
    QRect progress;
    std::array<QRect, 4> figures;
    QRect table;
    QRect method;
    QRect passStrip; ///< with the bar under the current pass
    QRect pass;

    /// The strip makes way for the method's name, `methodWidth` wide.
    static ErasingLayout of(const ViewRuler &ruler, int methodWidth);
};

struct FinishedLayout
{
    QRect picture;
    QRect badge;
    QRect result;
    QRect caption;
    QRect card;
    std::array<QRect, 3> parts; ///< within the card
    std::array<QRect, 2> lines; ///< within the card
    QRect band;
    int bandMargin = 0; ///< before what stands in the band
    QRect bandButton;   ///< within the band
    QRect button;
    QRect note;

    static FinishedLayout of(const ViewRuler &ruler, bool hasFailures);
};

/// Where the view is lower than the design's, the distances between the groups shrink; the rows
/// keep their height.
struct PreferencesLayout
{
    struct Group
    {
        QRect label;
        QRect remark;
        QRect card;
    };
    QRect heading;
    std::array<Group, 3> groups;
    QRect version;
    QRect contact;
    QRect done;

    static PreferencesLayout of(const ViewRuler &ruler, int versionWidth, int contactWidth);
};

/// One row of a group in the preferences.
struct PreferenceRowLayout
{
    struct Widths
    {
        int label = 0;
        int remark = 0;
    };
    QRect label;
    QRect remark;
    QRect field; ///< left of the control
    QRect control;

    /// A remark that does not fit before the control begins further left than the others.
    static PreferenceRowLayout of(const ViewRuler &row, Widths widths, QSize control);
};
