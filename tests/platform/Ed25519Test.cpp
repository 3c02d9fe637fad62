#include "platform/Ed25519.h"

#include <QTest>

using Ed25519::PublicKey;

namespace {

// RFC 8032, section 7.1, "TEST 2".
const QByteArray key =
    QByteArray::fromHex("3d4017c3e843895a92b70aa74d1b7ebc9c982ccf2ec4968cc0cd55f12af4660c");
const QByteArray message = QByteArray::fromHex("72");
const QByteArray signature =
    QByteArray::fromHex("92a009a9f0d4cab8720e820b5f642540a2b27b5416503f8fb3762223ebdb69da"
                        "085ac1e43e15996e458f3613d0f11d8c387b2eaeb4302aeeb00d291612bb0c00");

bool verifies(const QByteArray &ofKey, const QByteArray &ofMessage, const QByteArray &given)
{
    const auto publicKey = PublicKey::fromBase64(ofKey.toBase64());
    return publicKey && publicKey->verifies(ofMessage, given);
}

QByteArray withFlippedBit(QByteArray bytes, qsizetype at)
{
    bytes[at] = char(bytes.at(at) ^ 1);
    return bytes;
}

} // namespace

class Ed25519Test : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void theStandardsSignaturesAreRight_data();
    void theStandardsSignaturesAreRight();
    void oneFlippedBitIsNotSigned();
    void aMessageThatGoesOnOrEndsEarlierIsNotSigned();
    void aSignatureOfAnotherLengthIsRefused();
    void aSignatureWithTheGroupsOrderAddedIsRefused();
    void onlyThirtyTwoBytesInBase64AreAKey_data();
    void onlyThirtyTwoBytesInBase64AreAKey();
};

void Ed25519Test::theStandardsSignaturesAreRight_data()
{
    QTest::addColumn<QByteArray>("publicKey");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("given");
    QTest::newRow("TEST 1, the empty message")
        << QByteArray::fromHex("d75a980182b10ab7d54bfed3c964073a0ee172f3daa62325af021a68f707511a")
        << QByteArray()
        << QByteArray::fromHex("e5564300c360ac729086e2cc806e828a84877f1eb8e5d974d873e06522490155"
                               "5fb8821590a33bacc61e39701cf9b46bd25bf5f0595bbe24655141438e7a100b");
    QTest::newRow("TEST 2, one byte") << key << message << signature;
    QTest::newRow("TEST 3, two bytes")
        << QByteArray::fromHex("fc51cd8e6218a1a38da47ed00230f0580816ed13ba3303ac5deb911548908025")
        << QByteArray::fromHex("af82")
        << QByteArray::fromHex("6291d657deec24024827e69c3abe01a30ce548a284743a445e3680d7db5ac3ac"
                               "18ff9b538d16f290ae67f760984dc6594a7c15e9716ed28dc027beceea1ec40a");
}

void Ed25519Test::theStandardsSignaturesAreRight()
{
    QFETCH(QByteArray, publicKey);
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, given);
    QVERIFY(verifies(publicKey, text, given));
}

void Ed25519Test::oneFlippedBitIsNotSigned()
{
    for (qsizetype at = 0; at < signature.size(); ++at)
        QVERIFY(!verifies(key, message, withFlippedBit(signature, at)));
    QVERIFY(!verifies(key, withFlippedBit(message, 0), signature));
    QVERIFY(!verifies(withFlippedBit(key, 0), message, signature));
}

void Ed25519Test::aMessageThatGoesOnOrEndsEarlierIsNotSigned()
{
    QVERIFY(!verifies(key, message + '\0', signature));
    QVERIFY(!verifies(key, QByteArray(), signature));
}

void Ed25519Test::aSignatureOfAnotherLengthIsRefused()
{
    QVERIFY(!verifies(key, message, QByteArray()));
    QVERIFY(!verifies(key, message, signature.first(63)));
    QVERIFY(!verifies(key, message, signature + '\0'));
}

/// The other text of the same signature (RFC 8032, section 8.4): L added to its second half.
void Ed25519Test::aSignatureWithTheGroupsOrderAddedIsRefused()
{
    const QByteArray order =
        QByteArray::fromHex("edd3f55c1a631258d69cf7a2def9de1400000000000000000000000000000010");
    QByteArray other = signature;
    int carry = 0;
    for (qsizetype at = 0; at < order.size(); ++at) {
        carry += int(uchar(other.at(32 + at))) + int(uchar(order.at(at)));
        other[32 + at] = char(carry & 0xFF);
        carry >>= 8;
    }
    QCOMPARE(carry, 0);
    QVERIFY(!verifies(key, message, other));
}

void Ed25519Test::onlyThirtyTwoBytesInBase64AreAKey_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("isKey");
    QTest::newRow("a key") << key.toBase64() << true;
    QTest::newRow("nothing") << QByteArray() << false;
    QTest::newRow("31 bytes") << key.first(31).toBase64() << false;
    QTest::newRow("33 bytes") << (key + 'x').toBase64() << false;
    QTest::newRow("hexadecimal") << key.toHex() << false;
    QTest::newRow("a stray character") << key.toBase64().replace(3, 1, "!") << false;
}

void Ed25519Test::onlyThirtyTwoBytesInBase64AreAKey()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, isKey);
    QCOMPARE(PublicKey::fromBase64(text).has_value(), isKey);
}

QTEST_MAIN(Ed25519Test)
#include "Ed25519Test.moc"
