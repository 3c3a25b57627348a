#pragma once

#include "cardtools/volumes/TKUSBDiskEntity.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <stop_token>

/// What is on a mounted card: shown before it is formatted.
struct CardContents {
    std::optional<uint64_t> freeBytes;
    int64_t recordings = 0;
    bool areMore = false; // than could be counted
    bool isReadable = true;
};

/// Reads the card and may hang with it, so never on the main thread.
CardContents contentsOfCard(const std::string& mountPath, std::stop_token stop);

/// Two lines for a list of cards: what it is, and what tells it from others. Contents that are not known yet
/// are left out.
QString formatCardText(const TKUSBDiskEntity& card, const std::optional<CardContents>& contents);

/// The text of the button that formats this card.
QString formatButtonText(const std::optional<TKUSBDiskEntity>& card);
