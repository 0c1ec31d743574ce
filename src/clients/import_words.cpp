#include "clients/import_words.h"

#include <QHash>
#include <QRegularExpression>
#include <array>

using namespace Qt::StringLiterals;

namespace
{

// Titles of each datum as EnClave leaves them; the first is its name on the command line.
struct Titulos {
    Dato dato;
    QLatin1StringView palabras;
};

constexpr Titulos Conocidos[] = {
    {Dato::Nada, "nada"_L1},
    {Dato::Cliente,
     "cliente propietario proprietario dueno dono tutor titular responsable responsavel owner"
     " client customer ayn clientname customername ownername ownersname clientsname petowner"
     " ownerfullname nombrecliente nombredelcliente nombrepropietario nombredelpropietario"
     " nombredueno nombredeldueno nombretutor nombredeltutor nombreyapellido apellidoynombre"
     " nombrecompleto nomecliente nomedocliente nomeproprietario nomedoproprietario nomedono"
     " nomedodono nometutor nomedotutor nomecompleto nomeesobrenome fullname firstname"
     " ownerfirstname clientfirstname nombredepila"_L1},
    {Dato::Apellido,
     "apellido apellidos sobrenome surname lastname familyname apellidocliente"
     " apellidodelcliente apellidopropietario apellidodelpropietario ownerlastname ownersurname"
     " clientlastname clientsurname sobrenomedocliente sobrenomedotutor"_L1},
    {Dato::IdCliente,
     "idcliente idpropietario iddueno idtutor iddono idproprietario idc clienteid propietarioid"
     " ownerid clientid customerid ownernumber clientnumber customernumber ownerno clientno"
     " codigocliente codigodecliente codigodelcliente codigodocliente codigopropietario"
     " nrocliente nrodecliente numerocliente numerodecliente numerodocliente numeropropietario"
     " accountnumber"_L1},
    {Dato::Direccion,
     "direccion domicilio calle dir address streetaddress street homeaddress address1"
     " addressline1 endereco rua logradouro morada direcciondelcliente enderecodocliente"
     " domiciliodelcliente"_L1},
    {Dato::Subregion,
     "localidad subregion ciudad barrio poblacion loc localidade cidade bairro city town suburb"
     " cityname"_L1},
    {Dato::Region,
     "region departamento provincia estado regiao municipio distrito uf state province county"
     " stateprovince"_L1},
    {Dato::CodigoPostal,
     "cp codigopostal codpostal zip zipcode postcode postalcode postal cep zippostalcode codp"_L1},
    {Dato::CodigoDeArea,
     "codigodearea codarea codigoarea areacode ddd caracteristica prefijo prefixo"
     " codigotelefonico dialingcode dialcode"_L1},
    {Dato::Telefono,
     "telefono telefonos tel telefone telefones fone phone phones telephone phonenumber"
     " telefonofijo telefonefixo telfijo fijo landline homephone telephonenumber tel1 telefono1"
     " telefone1 phone1"_L1},
    {Dato::Movil,
     "movil celular celulares cel telefonomovil telefonocelular telefonecelular telemovel"
     " mobile mobilephone mobilenumber cell cellphone cellnumber whatsapp tel2 telefono2"
     " telefone2 phone2"_L1},
    {Dato::Email,
     "email emails mail correo correoelectronico emailaddress enderecodeemail correodelcliente"
     " direcciondecorreo"_L1},
    {Dato::NotasDeCliente,
     "notascliente notasdelcliente notasdocliente obscliente observacionescliente"
     " observacionesdelcliente observacoesdocliente clientnotes ownernotes customernotes"_L1},
    {Dato::Mascota,
     "mascota paciente animal pet patient petname petsname patientname animalname animalsname"
     " nombremascota nombredemascota nombredelamascota nombrepaciente nombredelpaciente"
     " nombreanimal nombredelanimal nombredelperro nomemascote nomedamascote nomepaciente"
     " nomedopaciente nomeanimal nomedoanimal nomepet nomedopet mascote dogname catname"_L1},
    {Dato::IdMascota,
     "idmascota idpaciente idanimal idpet idm petid patientid animalid mascotaid pacienteid"
     " ficha nroficha numerodeficha nrodeficha historiaclinica nrohistoria prontuario"
     " nropaciente numerodepaciente numerodopaciente patientnumber petnumber animalnumber"
     " licensenumber licencenumber nrolicencia numerodelicencia codigomascota codigopaciente"
     " codigoanimal codigodoanimal codigodopaciente"_L1},
    {Dato::Especie,
     "especie especies species animaltype pettype tipodeanimal tipoanimal tipodemascota"
     " tipomascota"_L1},
    {Dato::Raza,
     "raza raca breed breeds primarybreed breed1 raza1 raca1 razaprincipal racaprincipal"
     " breedname"_L1},
    {Dato::Pelaje,
     "pelaje pelagem pelo color colour cor coat capa manto coatcolor coatcolour colordepelo"
     " cordopelo colordelpelaje cordapelagem colorpelaje"_L1},
    {Dato::Marcas,
     "marcas senas senasparticulares sinais sinaisparticulares particularidades marks markings"
     " distinguishingmarks"_L1},
    {Dato::Chip, "chip microchip nrochip nrodechip numerochip numerodechip numerodemicrochip"
                 " numeromicrochip chipnumber microchipnumber chipno microchipno chipid microchipid"
                 " transponder"_L1},
    {Dato::Nacimiento,
     "nacimiento fechanacimiento fechadenacimiento fechanac fechadenac fnac fnacimiento fecn"
     " anodenacimiento anonacimiento nascimento datanascimento datadenascimento datanasc"
     " anodenascimento anonascimento birth birthdate birthday dateofbirth dob birthyear"
     " yearofbirth"_L1},
    {Dato::Peso,
     "peso pesokg pesoenkg pesoemkg pesolb pesolibras pesoenlibras pesoemlibras pesog weight"
     " weightkg weightkgs weightinkg weightlb weightlbs weightinlb weightinlbs weightinpounds"
     " pes"_L1},
    {Dato::Sexo,
     "sexo sex gender genero sexodelanimal sexodoanimal sexodelamascota animalsex petsex"
     " patientsex"_L1},
    {Dato::Castrado,
     "castrado castrada castradoa esterilizado esterilizada esterilizadoa neutered spayed"
     " neuteredspayed spayedneutered altered sterilized sterilised desexed"_L1},
    {Dato::Pedigri, "pedigri pedigree conpedigri compedigree haspedigree"_L1},
    {Dato::Fallecido,
     "fallecido fallecida falecido falecida muerto muerta morto obito deceased dead died"_L1},
    {Dato::NotasDeMascota,
     "notasmascota notasdelamascota notaspaciente notasdelpaciente notasdopaciente obsmascota"
     " obspaciente observacionesmascota observacionespaciente observacoesdopaciente"
     " observacoesdoanimal petnotes patientnotes animalnotes"_L1},
};

// Titles that say no more than "name", "number" or "notes": whose, the other columns tell.
constexpr QLatin1StringView SoloNombre = "nombre nome name nombres names"_L1;
constexpr QLatin1StringView SoloNumero =
    "id codigo cod code nro numero number no n num registro"_L1;
constexpr QLatin1StringView SoloNotas =
    "notas notes nota note obs observaciones observacoes comentarios comments remarks"_L1;

bool Entre(QLatin1StringView palabras, const QString &clave)
{
    for (const QLatin1StringView p : palabras.tokenize(u' ', Qt::SkipEmptyParts))
        if (p == clave)
            return true;
    return false;
}

Dato PorClave(const QString &clave)
{
    static const QHash<QString, Dato> mapa = [] {
        QHash<QString, Dato> m;
        for (const Titulos &t : Conocidos)
            for (const QLatin1StringView p : t.palabras.tokenize(u' ', Qt::SkipEmptyParts))
                m.insert(p.toString(), t.dato);
        return m;
    }();
    return mapa.value(clave, Dato::Nada);
}

// Lower case without accents; words stay apart.
QString Llano(const QString &texto)
{
    QString t;
    for (const QChar c : texto.normalized(QString::NormalizationForm_KD))
        if (!c.isMark())
            t += c;
    return std::move(t).toLower();
}

constexpr std::array<QLatin1StringView, 12> Meses{"enero janeiro january"_L1,
                                                  "febrero fevereiro february"_L1,
                                                  "marzo marco march"_L1,
                                                  "abril april"_L1,
                                                  "mayo maio may"_L1,
                                                  "junio junho june"_L1,
                                                  "julio julho july"_L1,
                                                  "agosto august"_L1,
                                                  "septiembre setiembre setembro september"_L1,
                                                  "octubre outubro october"_L1,
                                                  "noviembre novembro november"_L1,
                                                  "diciembre dezembro december"_L1};

// 1 to 12 for a month's name or its first three letters or more, else 0.
int Mes(const QString &palabra)
{
    if (palabra.size() < 3)
        return 0;
    for (int i = 0; i < 12; ++i)
        for (const QLatin1StringView m : Meses[size_t(i)].tokenize(u' ', Qt::SkipEmptyParts))
            if (m.startsWith(palabra))
                return i + 1;
    return 0;
}

// The figures of a date; a month's name is the number 100 + its month.
struct Cifras {
    QList<int> n;
    QList<qsizetype> largo;
    bool enPalabras = false;
};

std::optional<Cifras> Partir(const QString &texto)
{
    static const QRegularExpression hora(u"[t ]\\d{1,2}:\\d{2}.*$"_s);
    static const QRegularExpression piezas(u"(\\d+)(?:\\.?(?:st|nd|rd|th|o|a)\\b)?|([a-z]+)"_s);
    static const QRegularExpression ajeno(u"[^\\w\\s/.,-]"_s);
    QString t = Llano(texto.trimmed());
    t.remove(hora);
    if (t.contains(ajeno))
        return std::nullopt;
    Cifras c;
    for (auto i = piezas.globalMatch(t); i.hasNext();) {
        const QRegularExpressionMatch m = i.next();
        if (const QString cifras = m.captured(1); !cifras.isEmpty()) {
            if (cifras.size() > 8)
                return std::nullopt;
            c.n << cifras.toInt();
            c.largo << cifras.size();
        } else if (const int mes = Mes(m.captured(2))) {
            if (c.enPalabras)
                return std::nullopt;
            c.enPalabras = true;
            c.n << 100 + mes;
            c.largo << 0;
        } else if (m.captured(2) != u"de" && m.captured(2) != u"del" && m.captured(2) != u"of"
                   && m.captured(2) != u"do") {
            return std::nullopt;
        }
    }
    return c;
}

int Ano(int n, qsizetype largo)
{
    if (largo == 2)
        return n < 30 ? 2000 + n : 1900 + n;
    return largo == 4 ? n : 0;
}

// Day and month in figures with the year behind them.
bool EsCorta(const Cifras &c)
{
    return !c.enPalabras && c.n.size() == 3 && c.largo[0] <= 2 && c.largo[1] <= 2
           && (c.largo[2] == 2 || c.largo[2] == 4);
}

QDate Fecha(int ano, int mes, int dia)
{
    return ano > 0 && QDate::isValid(ano, mes, dia) ? QDate(ano, mes, dia) : QDate();
}

} // namespace

QString EnClave(const QString &texto)
{
    QString t;
    for (const QChar c : Llano(texto))
        if (c.isLetterOrNumber())
            t += c;
    return t;
}

QList<Dato> ReconocerTitulos(const QStringList &titulos)
{
    QList<Dato> datos(titulos.size(), Dato::Nada);
    QStringList claves;
    for (const QString &t : titulos)
        claves << EnClave(t);
    const auto hay = [&datos](Dato d) { return datos.contains(d); };
    for (qsizetype i = 0; i < claves.size(); ++i)
        if (const Dato d = PorClave(claves[i]); d != Dato::Nada && !hay(d))
            datos[i] = d;

    const auto poner = [&](QLatin1StringView palabras, auto cual) {
        for (qsizetype i = 0; i < claves.size(); ++i) {
            if (datos[i] != Dato::Nada || !Entre(palabras, claves[i]))
                continue;
            if (const Dato d = cual(); !hay(d))
                datos[i] = d;
            return;
        }
    };
    const auto hayAnimal = [&datos] {
        return std::any_of(datos.begin(), datos.end(), EsDeMascota);
    };
    poner(SoloNombre, [&] {
        if (hay(Dato::Mascota))
            return Dato::Cliente;
        return hay(Dato::Cliente) || (hayAnimal() && !hay(Dato::Apellido)) ? Dato::Mascota
                                                                           : Dato::Cliente;
    });
    // Taken for an owner's, the number of an animal would make an owner of each; the other way
    // round, names still tell the animals of one number apart.
    poner(SoloNumero, [&] { return hayAnimal() ? Dato::IdMascota : Dato::IdCliente; });
    poner(SoloNotas, [&] { return hayAnimal() ? Dato::NotasDeMascota : Dato::NotasDeCliente; });
    return datos;
}

QString NombreDeDato(Dato dato)
{
    for (const Titulos &t : Conocidos)
        if (t.dato == dato)
            return t.palabras.toString().section(u' ', 0, 0);
    return {};
}

std::optional<Dato> DatoPorNombre(const QString &nombre)
{
    const QString clave = EnClave(nombre);
    const Dato d = PorClave(clave);
    if (d == Dato::Nada && !clave.isEmpty() && clave != u"nada")
        return std::nullopt;
    return d;
}

QDate LeerFecha(const QString &texto, OrdenDeFecha orden)
{
    const auto partes = Partir(texto);
    if (!partes)
        return {};
    const Cifras &c = *partes;
    if (c.n.size() == 1 && !c.enPalabras) {
        if (c.largo[0] == 8) // 20151218
            return Fecha(c.n[0] / 10000, c.n[0] / 100 % 100, c.n[0] % 100);
        return c.largo[0] == 4 ? Fecha(c.n[0], 1, 1) : QDate();
    }
    if (c.n.size() != 3)
        return {};
    if (c.enPalabras) {
        const qsizetype mes = c.largo.indexOf(0);
        QList<qsizetype> otros{0, 1, 2};
        otros.removeAll(mes);
        // The year is the one of four figures, else the one behind.
        const bool delante = c.largo[otros[0]] == 4;
        const qsizetype ano = otros[delante ? 0 : 1], dia = otros[delante ? 1 : 0];
        return c.largo[dia] > 2 ? QDate()
                                : Fecha(Ano(c.n[ano], c.largo[ano]), c.n[mes] - 100, c.n[dia]);
    }
    if (c.largo[0] == 4)
        return Fecha(c.n[0], c.n[1], c.n[2]);
    if (!EsCorta(c))
        return {};
    const int ano = Ano(c.n[2], c.largo[2]);
    const QDate diaMes = Fecha(ano, c.n[1], c.n[0]), mesDia = Fecha(ano, c.n[0], c.n[1]);
    const bool primero = orden == OrdenDeFecha::DiaMes;
    const QDate &querida = primero ? diaMes : mesDia, &otra = primero ? mesDia : diaMes;
    return querida.isValid() ? querida : otra;
}

PruebaDeOrden OrdenQuePrueba(const QString &texto)
{
    const auto c = Partir(texto);
    if (!c || !EsCorta(*c))
        return PruebaDeOrden::Ninguna;
    const int a = c->n[0], b = c->n[1];
    if (std::max(a, b) > 31 || std::min(a, b) < 1 || (a > 12 && b > 12) || a == b)
        return PruebaDeOrden::Ninguna;
    return a > 12 ? PruebaDeOrden::DiaMes : b > 12 ? PruebaDeOrden::MesDia : PruebaDeOrden::Ambigua;
}

std::optional<int> LeerSexo(const QString &texto)
{
    const QString clave = EnClave(texto);
    if (Entre("m macho male masculino machoentero maleintact mi me"_L1, clave))
        return 0;
    if (Entre("h f w hembra female femea femenino feminino hembraentera femaleintact fi fe"_L1,
              clave))
        return 1;
    if (Entre("mc cm mn nm mcastrado"_L1, clave))
        return 2;
    if (Entre("hc fc cf fs sf fn hcastrada fcastrada"_L1, clave))
        return 3;
    // Words in any order: "neutered male", "Hembra (castrada)", "macho sin castrar".
    static const QRegularExpression noLetras(u"[^a-z]+"_s);
    int sexo = -1;
    bool castrado = false, niega = false;
    for (const QString &p : Llano(texto).split(noLetras, Qt::SkipEmptyParts)) {
        if (Entre("macho male m masculino"_L1, p))
            sexo = 0;
        else if (Entre("hembra female femea h f femenino feminino"_L1, p))
            sexo = 1;
        else if (Entre("castrado castrada castrated neutered spayed esterilizado esterilizada"
                       " sterilized sterilised desexed altered"_L1,
                       p))
            castrado = true;
        else if (Entre("no not non nao sem sin"_L1, p))
            niega = true;
        else if (Entre("castrar castracion castracao"_L1, p))
            castrado = castrado || !niega;
        else if (!Entre("entero entera inteiro inteira intact entire de"_L1, p))
            return std::nullopt;
    }
    if (sexo < 0)
        return std::nullopt;
    return sexo + (castrado && !niega ? 2 : 0);
}

std::optional<bool> LeerSiNo(const QString &texto)
{
    const QString clave = EnClave(texto);
    if (Entre("si s sim y yes 1 x true t verdadero verdadeiro v castrado castrada esterilizado"
              " esterilizada neutered spayed fallecido fallecida falecido muerto morto deceased"
              " dead"_L1,
              clave))
        return true;
    if (Entre("no n nao 0 false f falso entero entera inteiro inteira intact vivo viva alive"_L1,
              clave)
        || clave.isEmpty())
        return false;
    return std::nullopt;
}

int EspecieConocida(const QString &texto)
{
    static constexpr QLatin1StringView palabras[] = {
        "canino canina canine perro perra perros can cao caes cachorro cadela dog dogs"_L1,
        "felino felina feline gato gata gatos cat cats"_L1,
        "equino equina equine caballo yegua caballos cavalo egua cavalos horse mare horses"_L1};
    const QString clave = EnClave(texto);
    for (int i = 0; i < 3; ++i)
        if (Entre(palabras[i], clave))
            return i + 1;
    return 0;
}

QString UnidadEscrita(const QString &texto)
{
    // A word of its own, or right behind a figure or the word for weight.
    static const QRegularExpression forma(
        u"(?:^|[^a-z]|weight(?:in)?|peso(?:en|em)?)"
        "(?:(k(?:gs?|ilos?|ilogra\\w+))|(l(?:bs?|ibras?)|pounds?)|(g(?:rs?)?|gra?m\\w*))"
        "[^a-z0-9]*$"_s);
    const QRegularExpressionMatch m = forma.match(Llano(texto));
    if (!m.hasMatch())
        return {};
    if (!m.captured(1).isEmpty())
        return u"kg"_s;
    return m.captured(2).isEmpty() ? u"g"_s : u"lb"_s;
}

std::optional<double> LeerPeso(const QString &texto)
{
    static const QRegularExpression forma(u"^(\\d{1,6})(?:[.,](\\d{1,4}))?\\s*[a-z]*\\.?$"_s);
    const QRegularExpressionMatch m = forma.match(texto.trimmed().toLower());
    if (!m.hasMatch())
        return std::nullopt;
    return (m.captured(1) + u'.' + (m.captured(2).isEmpty() ? u"0"_s : m.captured(2))).toDouble();
}
