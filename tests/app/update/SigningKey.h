#pragma once

#include <QByteArray>

#include <memory>

#include <openssl/evp.h>

/// A pair of Ed25519 keys that the test makes for itself, and that goes with it.
class SigningKey
{
  public:
    SigningKey() : key_(EVP_PKEY_Q_keygen(nullptr, nullptr, "ED25519"), &EVP_PKEY_free) {}

    /// base64
    [[nodiscard]] QByteArray publicKey() const
    {
        QByteArray bytes(32, '\0');
        auto size = std::size_t(bytes.size());
        EVP_PKEY_get_raw_public_key(key_.get(), reinterpret_cast<unsigned char *>(bytes.data()),
                                    &size);
        return bytes.toBase64();
    }
    [[nodiscard]] QByteArray signature(const QByteArray &message) const
    {
        const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(),
                                                                              &EVP_MD_CTX_free);
        QByteArray bytes(64, '\0');
        auto size = std::size_t(bytes.size());
        EVP_DigestSignInit(context.get(), nullptr, nullptr, nullptr, key_.get());
        EVP_DigestSign(context.get(), reinterpret_cast<unsigned char *>(bytes.data()), &size,
                       reinterpret_cast<const unsigned char *>(message.constData()),
                       std::size_t(message.size()));
        return bytes;
    }

  private:
    std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)> key_;
};
