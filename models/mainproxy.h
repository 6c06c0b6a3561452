#pragma once

#include "proxymodel.h"

// The sorting proxy of the raw table; it numbers rows by their place on
// screen, so the numbers run from 1 without gaps whatever is sorted or hidden.
class MainProxy : public ProxyModel
{
public:
    MainProxy() = default;

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
};
