#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

/// Ed25519 signatures (RFC 8032, section 5.1), checked by OpenSSL. Makes none, and knows public
/// keys only.
///
/// Thread:  any
/// Failure: whatever cannot be checked counts as not signed
namespace Ed25519 {

constexpr qsizetype keySize = 32;       ///< bytes
constexpr qsizetype signatureSize = 64; ///< bytes

/// Thread: any (a value)
class PublicKey
{
  public:
    /// Of the 32 bytes in base64 (RFC 4648, section 4); nothing where the text is not that.
    static std::optional<PublicKey> fromBase64(const QByteArray &text);

    /// Whether the signature is this key's for exactly this message. Ed25519 needs a message whole:
    /// what is signed has to fit into memory.
    [[nodiscard]] bool verifies(QByteArrayView message, const QByteArray &signature) const;

  private:
    explicit PublicKey(QByteArray bytes) : bytes_(std::move(bytes)) {}

    QByteArray bytes_;
};

} // namespace Ed25519
