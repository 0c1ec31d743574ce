#include "importing/words.h"

#include <QHash>
#include <QRegularExpression>
#include <array>

using namespace importing;
using namespace Qt::StringLiterals;

namespace
{

// The known titles of each datum, as inKey gives them; the first is its name on the command line.
struct Titles {
    Datum datum;
    QLatin1StringView words;
};

constexpr Titles Known[] = {
    {Datum::Nothing, "nada"_L1},
    {Datum::Client,
     "cliente propietario proprietario dueno dono tutor titular responsable responsavel owner"
     " client customer ayn clientname customername ownername ownersname clientsname petowner"
     " ownerfullname nombrecliente nombredelcliente nombrepropietario nombredelpropietario"
     " nombredueno nombredeldueno nombretutor nombredeltutor nombreyapellido apellidoynombre"
     " nombrecompleto nomecliente nomedocliente nomeproprietario nomedoproprietario nomedono"
     " nomedodono nometutor nomedotutor nomecompleto nomeesobrenome fullname firstname"
     " ownerfirstname clientfirstname nombredepila"_L1},
    {Datum::Surname,
     "apellido apellidos sobrenome surname lastname familyname apellidocliente"
     " apellidodelcliente apellidopropietario apellidodelpropietario ownerlastname ownersurname"
     " clientlastname clientsurname sobrenomedocliente sobrenomedotutor"_L1},
    {Datum::IdClient,
     "idcliente idpropietario iddueno idtutor iddono idproprietario idc clienteid propietarioid"
     " ownerid clientid customerid ownernumber clientnumber customernumber ownerno clientno"
     " codigocliente codigodecliente codigodelcliente codigodocliente codigopropietario"
     " nrocliente nrodecliente numerocliente numerodecliente numerodocliente numeropropietario"
     " accountnumber codcliente codpropietario coddueno codtutor codcli clientcode"_L1},
    {Datum::Address,
     "direccion domicilio calle dir address streetaddress street homeaddress address1"
     " addressline1 endereco rua logradouro morada direcciondelcliente enderecodocliente"
     " domiciliodelcliente"_L1},
    {Datum::Subregion,
     "localidad subregion ciudad barrio poblacion loc localidade cidade bairro city town suburb"
     " cityname"_L1},
    {Datum::Region,
     "region departamento provincia estado regiao municipio distrito uf state province county"
     " stateprovince"_L1},
    {Datum::PostalCode,
     "cp codigopostal codpostal zip zipcode postcode postalcode postal cep zippostalcode codp"_L1},
    {Datum::AreaCode, "codigodearea codarea codigoarea areacode ddd caracteristica prefijo prefixo"
                      " codigotelefonico dialingcode dialcode"_L1},
    {Datum::Telephone,
     "telefono telefonos tel telefone telefones fone phone phones telephone phonenumber"
     " telefonofijo telefonefixo telfijo fijo landline homephone telephonenumber tel1 telefono1"
     " telefone1 phone1"_L1},
    {Datum::Mobile,
     "movil celular celulares cel telefonomovil telefonocelular telefonecelular telemovel"
     " mobile mobilephone mobilenumber cell cellphone cellnumber whatsapp tel2 telefono2"
     " telefone2 phone2"_L1},
    {Datum::Email,
     "email emails mail correo correoelectronico emailaddress enderecodeemail correodelcliente"
     " direcciondecorreo"_L1},
    {Datum::ClientNotes,
     "notascliente notasdelcliente notasdocliente obscliente observacionescliente"
     " observacionesdelcliente observacoesdocliente clientnotes ownernotes customernotes"_L1},
    {Datum::Patient,
     "mascota paciente animal pet patient petname petsname patientname animalname animalsname"
     " nombremascota nombredemascota nombredelamascota nombrepaciente nombredelpaciente"
     " nombreanimal nombredelanimal nombredelperro nomemascote nomedamascote nomepaciente"
     " nomedopaciente nomeanimal nomedoanimal nomepet nomedopet mascote dogname catname"_L1},
    {Datum::IdPatient,
     "idmascota idpaciente idanimal idpet idm petid patientid animalid mascotaid pacienteid"
     " ficha nroficha numerodeficha nrodeficha historiaclinica nrohistoria prontuario"
     " nropaciente numerodepaciente numerodopaciente patientnumber petnumber animalnumber"
     " licensenumber licencenumber nrolicencia numerodelicencia codigomascota codigopaciente"
     " codigoanimal codigodoanimal codigodopaciente codmascota codpaciente codanimal petcode"_L1},
    {Datum::Species,
     "especie especies species animaltype pettype tipodeanimal tipoanimal tipodemascota"
     " tipomascota"_L1},
    {Datum::Breed,
     "raza raca breed breeds primarybreed breed1 raza1 raca1 razaprincipal racaprincipal"
     " breedname"_L1},
    {Datum::Coat,
     "pelaje pelagem pelo color colour cor coat capa manto coatcolor coatcolour colordepelo"
     " cordopelo colordelpelaje cordapelagem colorpelaje"_L1},
    {Datum::Marks,
     "marcas senas senasparticulares sinais sinaisparticulares particularidades marks markings"
     " distinguishingmarks"_L1},
    {Datum::Chip,
     "chip microchip nrochip nrodechip numerochip numerodechip numerodemicrochip"
     " numeromicrochip chipnumber microchipnumber chipno microchipno chipid microchipid"
     " transponder"_L1},
    {Datum::Birth,
     "nacimiento fechanacimiento fechadenacimiento fechanac fechadenac fnac fnacimiento fecn"
     " anodenacimiento anonacimiento nascimento datanascimento datadenascimento datanasc"
     " anodenascimento anonascimento birth birthdate birthday dateofbirth dob birthyear"
     " yearofbirth"_L1},
    {Datum::Weight,
     "peso pesokg pesoenkg pesoemkg pesolb pesolibras pesoenlibras pesoemlibras pesog weight"
     " weightkg weightkgs weightinkg weightlb weightlbs weightinlb weightinlbs weightinpounds"
     " pes"_L1},
    {Datum::Sex,
     "sexo sex gender genero sexodelanimal sexodoanimal sexodelamascota animalsex petsex"
     " patientsex"_L1},
    {Datum::Neutered,
     "castrado castrada castradoa esterilizado esterilizada esterilizadoa neutered spayed"
     " neuteredspayed spayedneutered altered sterilized sterilised desexed"_L1},
    {Datum::Pedigree, "pedigri pedigree conpedigri compedigree haspedigree"_L1},
    {Datum::Deceased,
     "fallecido fallecida falecido falecida muerto muerta morto obito deceased dead died"_L1},
    {Datum::PatientNotes,
     "notasmascota notasdelamascota notaspaciente notasdelpaciente notasdopaciente obsmascota"
     " obspaciente observacionesmascota observacionespaciente observacoesdopaciente"
     " observacoesdoanimal petnotes patientnotes animalnotes"_L1},
};

// Titles that say just "name", "number" or "notes"; the other columns decide whose.
constexpr QLatin1StringView OnlyName = "nombre nome name nombres names"_L1;
constexpr QLatin1StringView OnlyNumber =
    "id codigo cod code nro numero number no n num registro"_L1;
constexpr QLatin1StringView OnlyNotes =
    "notas notes nota note obs observaciones observacoes comentarios comments remarks"_L1;

bool between(QLatin1StringView words, const QString &key)
{
    for (const QLatin1StringView p : words.tokenize(u' ', Qt::SkipEmptyParts))
        if (p == key)
            return true;
    return false;
}

Datum byKey(const QString &key)
{
    static const QHash<QString, Datum> map = [] {
        QHash<QString, Datum> m;
        for (const Titles &t : Known)
            for (const QLatin1StringView p : t.words.tokenize(u' ', Qt::SkipEmptyParts))
                m.insert(p.toString(), t.datum);
        return m;
    }();
    return map.value(key, Datum::Nothing);
}

// Lower case without accents; spaces between words are kept.
QString plainOf(const QString &text)
{
    QString t;
    for (const QChar c : text.normalized(QString::NormalizationForm_KD))
        if (!c.isMark())
            t += c;
    return std::move(t).toLower();
}

constexpr std::array<QLatin1StringView, 12> Months{"enero janeiro january"_L1,
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

// The month, 1 to 12, for its name or at least the first three letters of it; 0 for other words.
int month(const QString &word)
{
    if (word.size() < 3)
        return 0;
    for (int i = 0; i < 12; ++i)
        for (const QLatin1StringView m : Months[size_t(i)].tokenize(u' ', Qt::SkipEmptyParts))
            if (m.startsWith(word))
                return i + 1;
    return 0;
}

// The numbers of a date; the name of a month counts as 100 plus its number.
struct DateParts {
    QList<int> n;
    QList<qsizetype> length;
    bool inWords = false;
};

std::optional<DateParts> split(const QString &text)
{
    static const QRegularExpression hour(u"[t ]\\d{1,2}:\\d{2}.*$"_s);
    static const QRegularExpression pieces(u"(\\d+)(?:\\.?(?:st|nd|rd|th|o|a)\\b)?|([a-z]+)"_s);
    static const QRegularExpression foreign(u"[^\\w\\s/.,-]"_s);
    QString t = plainOf(text.trimmed());
    t.remove(hour);
    if (t.contains(foreign))
        return std::nullopt;
    DateParts c;
    for (auto i = pieces.globalMatch(t); i.hasNext();) {
        const QRegularExpressionMatch m = i.next();
        if (const QString figures = m.captured(1); !figures.isEmpty()) {
            if (figures.size() > 8)
                return std::nullopt;
            c.n << figures.toInt();
            c.length << figures.size();
        } else if (const int mes = month(m.captured(2))) {
            if (c.inWords)
                return std::nullopt;
            c.inWords = true;
            c.n << 100 + mes;
            c.length << 0;
        } else if (m.captured(2) != u"de" && m.captured(2) != u"del" && m.captured(2) != u"of"
                   && m.captured(2) != u"do") {
            return std::nullopt;
        }
    }
    return c;
}

int yearOf(int n, qsizetype length)
{
    if (length == 2)
        return n < 30 ? 2000 + n : 1900 + n;
    return length == 4 ? n : 0;
}

// Whether a date is numeric, with the year after day and month.
bool isShort(const DateParts &c)
{
    return !c.inWords && c.n.size() == 3 && c.length[0] <= 2 && c.length[1] <= 2
           && (c.length[2] == 2 || c.length[2] == 4);
}

QDate date(int year, int mes, int dia)
{
    return year > 0 && QDate::isValid(year, mes, dia) ? QDate(year, mes, dia) : QDate();
}

} // namespace

QString importing::inKey(const QString &text)
{
    QString t;
    for (const QChar c : plainOf(text))
        if (c.isLetterOrNumber())
            t += c;
    return t;
}

QList<Datum> importing::recogniseTitles(const QStringList &titles)
{
    QList<Datum> data(titles.size(), Datum::Nothing);
    QStringList keys;
    for (const QString &t : titles)
        keys << inKey(t);
    const auto has = [&data](Datum d) { return data.contains(d); };
    for (qsizetype i = 0; i < keys.size(); ++i)
        if (const Datum d = byKey(keys[i]); d != Datum::Nothing && !has(d))
            data[i] = d;

    const auto set = [&](QLatin1StringView words, auto which) {
        for (qsizetype i = 0; i < keys.size(); ++i) {
            if (data[i] != Datum::Nothing || !between(words, keys[i]))
                continue;
            if (const Datum d = which(); !has(d))
                data[i] = d;
            return;
        }
    };
    const auto hasPatient = [&data] { return std::any_of(data.begin(), data.end(), isOfPatient); };
    set(OnlyName, [&] {
        if (has(Datum::Patient))
            return Datum::Client;
        return has(Datum::Client) || (hasPatient() && !has(Datum::Surname)) ? Datum::Patient
                                                                            : Datum::Client;
    });
    // An animal's number taken for an owner's would make each animal a separate owner. The opposite
    // mistake does less harm: animals with the same number are still told apart by name.
    set(OnlyNumber, [&] { return hasPatient() ? Datum::IdPatient : Datum::IdClient; });
    set(OnlyNotes, [&] { return hasPatient() ? Datum::PatientNotes : Datum::ClientNotes; });
    return data;
}

QString importing::datumName(Datum datum)
{
    for (const Titles &t : Known)
        if (t.datum == datum)
            return t.words.toString().section(u' ', 0, 0);
    return {};
}

std::optional<Datum> importing::datumByName(const QString &name)
{
    const QString key = inKey(name);
    const Datum d = byKey(key);
    if (d == Datum::Nothing && !key.isEmpty() && key != u"nada")
        return std::nullopt;
    return d;
}

QDate importing::readDate(const QString &text, DateOrder order)
{
    const auto parts = split(text);
    if (!parts)
        return {};
    const DateParts &c = *parts;
    if (c.n.size() == 1 && !c.inWords) {
        if (c.length[0] == 8) // 20151218
            return date(c.n[0] / 10000, c.n[0] / 100 % 100, c.n[0] % 100);
        return c.length[0] == 4 ? date(c.n[0], 1, 1) : QDate();
    }
    if (c.n.size() != 3)
        return {};
    if (c.inWords) {
        const qsizetype mes = c.length.indexOf(0);
        QList<qsizetype> other{0, 1, 2};
        other.removeAll(mes);
        // The year is the number with four digits, else the last one.
        const bool ahead = c.length[other[0]] == 4;
        const qsizetype year = other[ahead ? 0 : 1], dia = other[ahead ? 1 : 0];
        return c.length[dia] > 2
                   ? QDate()
                   : date(yearOf(c.n[year], c.length[year]), c.n[mes] - 100, c.n[dia]);
    }
    if (c.length[0] == 4)
        return date(c.n[0], c.n[1], c.n[2]);
    if (!isShort(c))
        return {};
    const int year = yearOf(c.n[2], c.length[2]);
    const QDate dayMonth = date(year, c.n[1], c.n[0]), monthDay = date(year, c.n[0], c.n[1]);
    const bool first = order == DateOrder::DayMonth;
    const QDate &wanted = first ? dayMonth : monthDay, &other = first ? monthDay : dayMonth;
    return wanted.isValid() ? wanted : other;
}

OrderTest importing::orderThatTests(const QString &text)
{
    const auto c = split(text);
    if (!c || !isShort(*c))
        return OrderTest::None;
    const int a = c->n[0], b = c->n[1];
    if (std::max(a, b) > 31 || std::min(a, b) < 1 || (a > 12 && b > 12) || a == b)
        return OrderTest::None;
    return a > 12 ? OrderTest::DayMonth : b > 12 ? OrderTest::MonthDay : OrderTest::Ambiguous;
}

std::optional<int> importing::readSex(const QString &text)
{
    const QString key = inKey(text);
    if (between("m macho male masculino machoentero maleintact mi me"_L1, key))
        return 0;
    if (between("h f w hembra female femea femenino feminino hembraentera femaleintact fi fe"_L1,
                key))
        return 1;
    if (between("mc cm mn nm mcastrado"_L1, key))
        return 2;
    if (between("hc fc cf fs sf fn hcastrada fcastrada"_L1, key))
        return 3;
    // The words may come in any order: "neutered male", "Hembra (castrada)", "macho sin castrar".
    static const QRegularExpression nonLetters(u"[^a-z]+"_s);
    int sex = -1;
    bool neutered = false, negates = false;
    for (const QString &p : plainOf(text).split(nonLetters, Qt::SkipEmptyParts)) {
        if (between("macho male m masculino"_L1, p))
            sex = 0;
        else if (between("hembra female femea h f femenino feminino"_L1, p))
            sex = 1;
        else if (between("castrado castrada castrated neutered spayed esterilizado esterilizada"
                         " sterilized sterilised desexed altered"_L1,
                         p))
            neutered = true;
        else if (between("no not non nao sem sin"_L1, p))
            negates = true;
        else if (between("castrar castracion castracao"_L1, p))
            neutered = neutered || !negates;
        else if (!between("entero entera inteiro inteira intact entire de"_L1, p))
            return std::nullopt;
    }
    if (sex < 0)
        return std::nullopt;
    return sex + (neutered && !negates ? 2 : 0);
}

std::optional<bool> importing::readYesNo(const QString &text)
{
    const QString key = inKey(text);
    if (between("si s sim y yes 1 x true t verdadero verdadeiro v castrado castrada esterilizado"
                " esterilizada neutered spayed fallecido fallecida falecido muerto morto deceased"
                " dead"_L1,
                key))
        return true;
    if (between("no n nao 0 false f falso entero entera inteiro inteira intact vivo viva alive"_L1,
                key)
        || key.isEmpty())
        return false;
    return std::nullopt;
}

int importing::knownSpecies(const QString &text)
{
    static constexpr QLatin1StringView words[] = {
        "canino canina canine perro perra perros can cao caes cachorro cadela dog dogs"_L1,
        "felino felina feline gato gata gatos cat cats"_L1,
        "equino equina equine caballo yegua caballos cavalo egua cavalos horse mare horses"_L1};
    const QString key = inKey(text);
    for (int i = 0; i < 3; ++i)
        if (between(words[i], key))
            return i + 1;
    return 0;
}

QString importing::writtenUnit(const QString &text)
{
    // The unit is a separate word, or follows a digit or the word for weight directly.
    static const QRegularExpression pattern(
        u"(?:^|[^a-z]|weight(?:in)?|peso(?:en|em)?)"
        "(?:(k(?:gs?|ilos?|ilogra\\w+))|(l(?:bs?|ibras?)|pounds?)|(g(?:rs?)?|gra?m\\w*))"
        "[^a-z0-9]*$"_s);
    const QRegularExpressionMatch m = pattern.match(plainOf(text));
    if (!m.hasMatch())
        return {};
    if (!m.captured(1).isEmpty())
        return u"kg"_s;
    return m.captured(2).isEmpty() ? u"g"_s : u"lb"_s;
}

std::optional<double> importing::readWeight(const QString &text)
{
    static const QRegularExpression pattern(u"^(\\d{1,6})(?:[.,](\\d{1,4}))?\\s*[a-z]*\\.?$"_s);
    const QRegularExpressionMatch m = pattern.match(text.trimmed().toLower());
    if (!m.hasMatch())
        return std::nullopt;
    return (m.captured(1) + u'.' + (m.captured(2).isEmpty() ? u"0"_s : m.captured(2))).toDouble();
}
