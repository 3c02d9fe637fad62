#include "platform/Ed25519.h"

#include <memory>

#include <openssl/crypto.h>
#include <openssl/evp.h>

namespace {

struct Release
{
    void operator()(EVP_PKEY *key) const { EVP_PKEY_free(key); }
    void operator()(EVP_MD_CTX *context) const { EVP_MD_CTX_free(context); }
};

const unsigned char *bytesOf(QByteArrayView view)
{
    return reinterpret_cast<const unsigned char *>(view.data());
}

bool verifiesRaw(QByteArrayView key, QByteArrayView message, QByteArrayView signature)
{
    const std::unique_ptr<EVP_PKEY, Release> publicKey(EVP_PKEY_new_raw_public_key(
        EVP_PKEY_ED25519, nullptr, bytesOf(key), std::size_t(key.size())));
    const std::unique_ptr<EVP_MD_CTX, Release> context(EVP_MD_CTX_new());
    return publicKey && context &&
           EVP_DigestVerifyInit(context.get(), nullptr, nullptr, nullptr, publicKey.get()) == 1 &&
           EVP_DigestVerify(context.get(), bytesOf(signature), std::size_t(signature.size()),
                            bytesOf(message), std::size_t(message.size())) == 1;
}

} // namespace

namespace Ed25519 {

std::optional<PublicKey> PublicKey::fromBase64(const QByteArray &text)
{
    const auto decoded =
        QByteArray::fromBase64Encoding(text, QByteArray::AbortOnBase64DecodingErrors);
    if (!decoded || (*decoded).size() != keySize)
        return std::nullopt;
    return PublicKey(*decoded);
}

bool PublicKey::verifies(QByteArrayView message, const QByteArray &signature) const
{
    const bool isRight = verifiesRaw(bytes_, message, signature);
    // What OpenSSL keeps for this thread, its list of errors above all. It would go with the
    // thread, but a pool's threads outlive OpenSSL.
    OPENSSL_thread_stop();
    return isRight;
}

} // namespace Ed25519
