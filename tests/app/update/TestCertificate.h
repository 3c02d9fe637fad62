#pragma once

#include <QByteArray>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>

#include <memory>

#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>

/// A key and a certificate for 127.0.0.1 that the test makes and signs for itself.
class TestCertificate
{
  public:
    TestCertificate()
        : key_(EVP_PKEY_Q_keygen(nullptr, nullptr, "EC", "P-256"), &EVP_PKEY_free),
          certificate_(X509_new(), &X509_free)
    {
        X509 *const certificate = certificate_.get();
        X509_set_version(certificate, X509_VERSION_3);
        ASN1_INTEGER_set(X509_get_serialNumber(certificate), 1);
        X509_gmtime_adj(X509_getm_notBefore(certificate), -3600);
        X509_gmtime_adj(X509_getm_notAfter(certificate), 3600);
        X509_set_pubkey(certificate, key_.get());
        X509_NAME *const name = X509_get_subject_name(certificate);
        X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC,
                                   reinterpret_cast<const unsigned char *>("127.0.0.1"), -1, -1, 0);
        X509_set_issuer_name(certificate, name);
        add(NID_subject_alt_name, "IP:127.0.0.1");
        add(NID_basic_constraints, "critical,CA:TRUE");
        X509_sign(certificate, key_.get(), EVP_sha256());
    }

    [[nodiscard]] QSslCertificate certificate() const
    {
        return QSslCertificate(
            pem([this](BIO *out) { PEM_write_bio_X509(out, certificate_.get()); }));
    }
    /// For a server.
    [[nodiscard]] QSslConfiguration configuration() const
    {
        const QByteArray key = pem([this](BIO *out) {
            PEM_write_bio_PrivateKey(out, key_.get(), nullptr, nullptr, 0, nullptr, nullptr);
        });
        QSslConfiguration configuration;
        configuration.setLocalCertificate(certificate());
        configuration.setPrivateKey(QSslKey(key, QSsl::Ec));
        return configuration;
    }

    /// While it lives, this process's connections trust the certificate.
    class Trust
    {
      public:
        explicit Trust(const TestCertificate &trusted)
        {
            QSslConfiguration configuration = before_;
            configuration.addCaCertificate(trusted.certificate());
            QSslConfiguration::setDefaultConfiguration(configuration);
        }
        ~Trust() { QSslConfiguration::setDefaultConfiguration(before_); }
        Trust(const Trust &) = delete;
        Trust &operator=(const Trust &) = delete;

      private:
        QSslConfiguration before_ = QSslConfiguration::defaultConfiguration();
    };

  private:
    void add(int kind, const char *value)
    {
        X509_EXTENSION *const extension = X509V3_EXT_conf_nid(nullptr, nullptr, kind, value);
        X509_add_ext(certificate_.get(), extension, -1);
        X509_EXTENSION_free(extension);
    }
    template <class Write> static QByteArray pem(const Write &write)
    {
        const std::unique_ptr<BIO, decltype(&BIO_free)> out(BIO_new(BIO_s_mem()), &BIO_free);
        write(out.get());
        char *data = nullptr;
        const auto size = BIO_get_mem_data(out.get(), &data);
        return QByteArray(data, size);
    }

    std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)> key_;
    std::unique_ptr<X509, decltype(&X509_free)> certificate_;
};
