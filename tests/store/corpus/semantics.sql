# What statements of the dialect mean, shown by the rows that the engine returns.
# Each [rule] begins with empty tables, except for Uno, which holds (1, '2024-01-31').
#   @clients            inserts the five clients of the test
#   @STATEMENT          runs a statement of the engine's own SQL
#   STATEMENT           runs a statement of the dialect
#   ... -> A|B / C|D    and expects these rows
#   = EXPRESSION -> A   expects the value of an expression
#   ? CONDITION -> 2 5  expects the numbers of the clients that meet a condition
#   ... <- A, B -> C    with these values bound; text that reads as a number has a ' before it
#   !3061 STATEMENT     expects a statement to be refused with that error number

[Text is compared without letter case but with accents]
@clients
? ayn = 'ÁLVAREZ' -> 2 5
? ayn = 'alvarez' ->
? ayn = ? <- Álvarez -> 2 5
? ayn in ('x', 'RUIZ ANA') -> 1
? ayn not in ('RUIZ ANA', 'alba') -> 2 5
? ayn between 'ALVAREZ' and 'alba' -> 3
? ayn < 'alc' -> 3
@INSERT INTO Razas VALUES (9, 'ALBA')
? ayn in (select nom from razas) -> 3
select idc, idr from clientes, razas where ayn = nom -> 3|9
select idc, idr from (clientes inner join razas on clientes.ayn = razas.nom) -> 3|9
select count(*) from clientes group by ayn order by ayn -> 1 / 1 / 2 / 1
select distinct lcase(ayn) from clientes where idc <> 4 order by 1 -> alba / álvarez / ruiz ana
select min(ayn), max(ayn) from clientes where idc <> 5 -> Alba|Ruiz Ana
select idc from clientes order by ayn, idc desc -> 4 / 3 / 5 / 2 / 1

[Names are found without letter case and an unknown one is an error]
@INSERT INTO Mascotas (idm, [preñez actual], dec, int, min) VALUES (7, 3, 0, -1, 2)
select [PREÑEZ ACTUAL], MASCOTAS.IDM, dec, int from MASCOTAS where DEC = 0 and int = -1 and min > 1 -> 3|7|0|-1
select m.idm from mascotas as m where M.idm = 7 -> 7
!3061 select nada from Mascotas
!3061 select [nada] from Mascotas
!3061 select "idm", x.idm from Mascotas
!3061 select mascotas.idm from mascotas as m
!3078 select * from nada
!3078 update nada set x = 1
!3061 insert into Mascotas (nada) values (1)
!3061 insert into Mascotas (idm) values (nada)
# The engine would look for the name in the inner table.
!3061 delete from mascotas where exists (select * from clientes as mascotas where ayn = nom)

[An unqualified name of several tables is refused, joined or not]
@INSERT INTO Mascotas (idm, idc, min) VALUES (7, 1, 5), (8, 1, 6)
@INSERT INTO Consumo (idm, can, min) VALUES (7, 0.5, 9), (8, 0, 9)
!3061 select idm from consumo inner join mascotas on consumo.idm = mascotas.idm
!3061 select min from consumo inner join mascotas on consumo.idm = mascotas.idm
!3061 select idm from consumo, mascotas
select mascotas.min from consumo, mascotas where consumo.idm = mascotas.idm and can = 0 -> 6

[Like takes any type and the dialect's wildcards; Null is neither like nor not like]
@clients
? ayn like 'ÁL*' -> 2 5
? ayn like ? <- *Z*A* -> 1
? ayn not like 'a*' -> 1 2 5
? saldo like '20' -> 2
? alta like '2024-02-*' -> 5
? ayn like 'a_ba' or ayn like 'a%' ->
# A pattern of each row.
@INSERT INTO Razas VALUES (8, 'r*'), (9, '*ba')
select idr, idc from razas, clientes where ayn like razas.nom order by idr -> 8|1 / 9|3

[Wildcards]
= 'Caniche' like 'caniche', 'Caniche toy' like 'caniche' -> -1|0
= 'Caniche toy' like 'can*', 'Caniche toy' like '*TOY', 'Caniche toy' like '*n*t*' -> -1|-1|-1
= 'Caniche' like '*x*', '' like '*', '' like '?' -> 0|-1|0
= 'Peñón' like 'pe?ón', 'PEÑÓN' like 'peñón', 'Penon' like 'peñón', 'Álvarez' like 'á*' -> -1|-1|0|-1
= '099' like '09#', '09a' like '09#', '#1' like '[#]#' -> -1|0|-1
= 'b1' like '[a-c]#', 'd1' like '[a-c]#', 'd1' like '[!a-c]#' -> -1|0|-1
= 'ñ' like '[a-z]', 'É' like '[a-f]', '-' like '[a-]' -> -1|-1|-1
= '!' like '[!]', 'x' like '[!]' -> -1|0
= 'a*b' like 'a[*]b', 'axb' like 'a[*]b' -> -1|0
# A bracket that is not closed matches nothing, and an empty pair stands for no letter.
= 'a[b' like 'a[[]b', 'a]b' like 'a]b', 'a[' like 'a[', 'ab' like 'a[b' -> -1|-1|0|0
= 'ab' like 'a[]b', 'a' like 'a[]' -> -1|-1
# What other dialects take for wildcards are letters.
= '100%' like '100%', '1000' like '100%', 'a_b' like 'a_b', 'axb' like 'a_b' -> -1|0|-1|0

[Days and times reckon in the form that is stored]
= #03/05/24# -> 2024-03-05
= #3/5/1930# -> 1930-03-05
= #01/01/29# -> 2029-01-01
= #01/01/30# -> 1930-01-01
= #2024-02-29# -> 2024-02-29
= #9:05# -> 09:05:00
= #03/05/24 09:05:10# -> 2024-03-05 09:05:10
= #03/05/24 00:00# -> 2024-03-05
!3075 select #02/30/24# from uno
!3075 select #02/29/23# from uno
!3075 select #13/01/24# from uno
!3075 select #24:00# from uno
!3075 select #3/5/024# from uno
!3075 select #03/05/24 from uno
!3075 select ## from uno
!3075 select #x# from uno
= date() -> 2024-03-05
= TIME() -> 09:30:00
= Now() -> 2024-03-05 09:30:00
= (DATE() - 5) -> 2024-02-29
= 30 + date() -> 2024-04-04
= now() - 1 -> 2024-03-04 09:30:00
= date() - dia -> 34
= month(date()), day(dia), year(dia) -> 3|31|2024
= month(null) ->
= DateAdd('m', 1, dia) -> 2024-02-29
= DateAdd("yyyy", -1, #02/29/24#) -> 2023-02-28
= DateAdd('ww', 2, dia) -> 2024-02-14
= DateAdd('n', 45, #09:30#) -> 10:15:00
= DateAdd('h', 20, #03/05/24 09:30#) -> 2024-03-06 05:30:00
= DateAdd('d', 999999999, dia) ->
= DateDiff('d', dia, date()), DateDiff('m', dia, date()) -> 34|2
= DateDiff('yyyy', #12/31/23#, #01/01/24#) -> 1
# Saturday to Sunday.
= DateDiff('ww', #03/02/24#, #03/03/24#) -> 1
= DateDiff('ww', #03/03/24#, #03/09/24#) -> 0
= DateDiff('n', #08:59#, #10:00#), DateDiff('h', #08:59#, #10:00#) -> 61|2
!3075 select dia + dia from uno
!3075 select DateAdd('x', 1, dia) from uno
!3075 select date() - #09:30# from uno

[A value compared with a day reckons as one]
@clients
? alta < ? - 4 <- 2024-03-05 -> 5
? alta between ? - ? and ? <- 2024-03-05, 5, 2024-03-01 -> 1 5
? idc = ? - 3 <- 5 -> 2
update clientes set nace = ? - 1 where idc = 1 <- 2024-03-01
select nace from clientes where idc = 1 -> 2024-02-29

[Between takes its bounds in either order]
@clients
? alta between #03/05/24# and #03/01/24# -> 1 2
? alta between ? and ? <- 2024-03-05, 2024-03-01 -> 1 2
? saldo between 10 and 1 -> 5
? saldo not between 10 and 1 -> 1 2 3
? saldo between null and 1 ->

[Amounts are exact, and rounded half to even however the value comes in]
= 0.3 - 3 * 0.1 -> 0
= iif(0.1 + 0.2 = 0.3, 'x', 'y') -> x
@INSERT INTO Clientes (idc, saldo) VALUES (1, 0.3), (2, 0.1), (3, 0.1), (4, 0.1)
select sum(saldo) - 0.6, avg(saldo), sum(saldo * 3) from clientes -> 0|0.14999999999999999|1.8
select saldo - 0.1 - 0.1 - 0.1 from clientes where idc = 1 -> 0
select saldo * 0.00015 from clientes where idc = 2 -> 0
update clientes set saldo = 0.00025 where idc = 1
update clientes set saldo = ? where idc = 2 <- 0.00035
insert into clientes (idc, saldo) values (9, 7 / 3)
insert into clientes (idc, saldo) select 10, pes from mascotas
select saldo from clientes where idc in (1, 2, 9) order by idc -> 0.00020000000000000001 / 0.00040000000000000002 / 2.3332999999999999
? saldo = 2.3333 -> 9

[Numbers; a whole column takes the rounded one]
= 7 / 2, 7 \ 2, 7 mod 4, -7 \ 2 -> 3.5|3|3|-3
= 2 + 3 * 4 - -1, (2 + 3) * 4, 10 - 3 - 2, 12 \ 5 * 2 -> 15|20|5|1
= int(-2.5), int(2.9), abs(-3), round(2.5), round(3.5), round(2.345, 2) -> -3|2|3|2|4|2.3399999999999999
= val('12.5 kg'), val(' 3 4x'), val('x') -> 12.5|34|0
= 1 / 0 ->
!3075 select 1e999 from uno
!3075 select 2 ^ 3 from uno
insert into clientes (idc) values (2.5)
insert into clientes (idc) values (7 / 2)
? true -> 2 4

[Yes and No are -1 and 0, whatever is written]
@clients
= true, false, yes, no, not true, not false, 1 = 1, 1 = 2, null = 1 -> -1|0|-1|0|0|-1|-1|0|
= (1 = 1) = true, (1 = 1) + 1, iif(not 1 = 2, 'x', 'y') -> -1|0|x
select idc, deuda and saldo > 6, ayn like 'r*' from clientes where deuda order by idc -> 1|-1|-1 / 5|0|0
? not deuda -> 2 3 4
update clientes set deuda = idc > 2
select deuda from clientes order by idc -> 0 / 0 / -1 / -1 / -1
update clientes set deuda = 1
select distinct deuda from clientes -> -1
update clientes set deuda = 0
update clientes set deuda = ? <- 1
select distinct deuda from clientes -> -1
update clientes set deuda = null where idc = 1
insert into clientes (idc, deuda) select idm, idm from mascotas
select deuda from clientes where idc = 1 -> 0

[Text functions]
= 'a' & null & 1 & 2.50 & #09:30# & true -> a12.509:30:00-1
= 'a' + 'b', 'a' + null, 1 + 2 & 'x' -> ab||3x
= ('a' + ?) & 'b' <- x -> axb
= ucase('ñandú'), lcase('ÁRBOL'), len('ñandú'), len(12.0) -> ÑANDÚ|árbol|5|2
= left('ñandú', 2), right('ñandú', 2), mid('ñandú', 2, 3), mid('ñandú', 4) -> ña|dú|and|dú
= left('ab', 9), right('ab', 9), right('ab', 0), left('ab', 0), mid('ab', 3) -> ab|ab|||
= trim('  a b '), cstr(2.5), cstr(7 / 7) -> a b|2.5|1
= 'it''s', "a ""b""" -> it's|a "b"
= nz(null), nz(null, 5), nz('a', 'b'), iif(null, 1, 2) -> |5|a|2
!3075 select format(1, '0') from uno
!3075 select len('a', 'b') from uno

[A memo keeps a text that looks like a number]
insert into clientes (idc, obs) values (1, ?) <- '0341
insert into clientes (idc, obs) values (2, ' 12 ')
insert into clientes (idc, obs) values (3, '1e5')
insert into clientes (idc, obs) values (4, 'Paga')
insert into clientes (idc, obs) select 5, tel & '007' from clientes where idc = 1
select obs from clientes order by idc -> x'0341' / x' 12 ' / x'1e5' / Paga / x'007'
update clientes set obs = 15.0, tel = obs where idc = 4
update clientes set tel = obs where idc = 1
select obs, tel from clientes where idc in (1, 4) order by idc -> x'0341'|0341 / x'15'|Paga
select idc, obs & '!', len(obs) from clientes where obs = '0341' or obs like '1E*' order by idc -> 1|0341!|4 / 3|1e5!|3
select idc from clientes where obs in ('007', '0341') order by obs desc -> 1 / 5
? obs is null or obs = '' ->

[An alias serves later in the field list and in the order]
@clients
select idc, (select sum(n) from uno where n = idc) as pagos, saldo - pagos as resto, resto * 2 as doble from clientes where idc < 3 order by resto desc -> 1|1|9.5|19 / 2|||
select saldo as idc from clientes where idc < 3 order by idc -> 10.5 / 20
!3061 select resto + 1, saldo as resto from clientes
!3061 select saldo as resto from clientes where resto > 1

[A number in the order is a position only when it stands alone]
@clients
select ayn, idc from clientes where idc < 4 order by 2 desc -> Alba|3 / álvarez|2 / Ruiz Ana|1
!3075 select ayn from clientes order by 2
# What the engine itself would reduce to a number is no position either.
select idc from clientes where idc = 1 order by -7 -> 1
select idc from clientes where idc = 1 order by 5 - 8 -> 1
select idc from clientes where idc = 1 order by (no) and deuda -> 1
select idc, 9 as k from clientes where idc = 1 order by k -> 1|9
# The engine does not see the outer query there.
!3075 select idc from clientes where exists (select n from uno order by ayn)

[Joins, subqueries and unions]
@clients
@INSERT INTO Mascotas (idm, idc, nom) VALUES (7, 1, 'Luna'), (8, 1, 'Toby'), (9, 2, 'luna'), (10, 99, 'Sola')
@INSERT INTO Consumo (idm, can) VALUES (7, 1), (9, 2)
select ayn, nom, can from ((clientes left join mascotas on clientes.idc = mascotas.idc) left join consumo on mascotas.idm = consumo.idm) where clientes.idc < 4 order by ayn, nom -> Alba|| / álvarez|luna|2 / Ruiz Ana|Luna|1 / Ruiz Ana|Toby|
select idm, ayn from clientes right join mascotas on clientes.idc = mascotas.idc where idm > 8 order by idm -> 9|álvarez / 10|
select ayn, can from clientes inner join (mascotas inner join consumo on mascotas.idm = consumo.idm) on clientes.idc = mascotas.idc order by can -> Ruiz Ana|1 / álvarez|2
!3075 select * from clientes left join (mascotas inner join consumo on mascotas.idm = consumo.idm) on clientes.idc = mascotas.idc
!3075 select * from clientes, clientes
? exists (select * from mascotas where mascotas.idc = clientes.idc) and idc in (select idc from mascotas where nom like 'lu*') -> 1 2
? not exists (select * from mascotas where mascotas.idc = clientes.idc) -> 3 4 5
select idm from mascotas union all select n from uno order by 1 -> 1 / 7 / 8 / 9 / 10
!3075 select idm, nom from mascotas union select n from uno
!3075 select (select idm, nom from mascotas) from uno

[Totals]
@clients
select count ('dia') as [c], count(*), count(saldo) from clientes -> 5|5|4
select top 2 deuda, sum(saldo) as t from clientes group by deuda having sum(saldo) > 1 order by t desc -> 0|20.100000000000001 / -1|15.5
select sum(saldo) is null from clientes where idc = 77 -> -1
select top 0 idc from clientes ->
!3075 select idc, count(*) from clientes
!3075 select idc from clientes where count(*) > 1
!3075 select sum(count(*)) from clientes
!3075 select idc from clientes order by count(*)
!3075 select * from clientes group by idc
!3075 select count(*) as c, sum(c) from clientes
!3061 select idc from clientes where (select sum(clientes.idc) from uno) > 1
!3075 select max(idc, 2) from clientes

[Changes write the rows that they name and count their values]
@clients
delete * from clientes where idc = 1
delete from clientes where idc = (select max(idc) from clientes)
update clientes set clientes.saldo = saldo + 1, ayn = ayn & '!' where idc = 2;
insert into turnos (dia, hor) values (Date(), Time())
select idc, ayn, saldo from clientes where idc < 5 order by idc -> 2|álvarez!|21 / 3|Alba|0.10000000000000001 / 4||
select id, dia, hor from turnos -> 1|2024-03-05|09:30:00
select max(idc) from clientes -> 4
!3075 insert into clientes (idc, ayn) values (1)
!3075 insert into clientes (idc, ayn) select idc from clientes
!3075 insert into clientes (idc, IDC) values (1, 2)
!3075 insert into clientes values (1)
!3075 update clientes set idc = 1, idc = 2
!3075 update clientes inner join mascotas on clientes.idc = mascotas.idc set ayn = ''
!3075 delete mascotas.* from clientes

[What is not understood is refused]
!3075 ;
!3075 select
!3075 select n from
!3075 select n from uno where
!3075 select n from uno; drop table uno
!3075 select n from uno -- x
!3075 select n /* x */ from uno
!3075 select n from uno where n = 'x
!3075 select [n from uno
!3075 select `n` from uno
!3075 select n into otra from uno
!3075 select top 10 percent n from uno
!3075 select n from (select n from uno)
!3075 pragma key = 'x'
!3075 attach 'x' as y
!3075 select n from main.uno
!3075 select n from uno limit 1
!3075 select n from uno where n glob 1
!3075 select randomblob(9) from uno
!3075 select load_extension('x')
!3075 select n || n from uno
!3075 select n from uno group by 1
!3075 select 12abc from uno
!3075 begin
!3075 select n from uno where n = @x
!3075 create table x (a text(0))
!3075 create table x (a text(256))
!3075 create table x ()
!3075 create table x (a blob)
!3075 alter table x rename to y
!3075 drop index i

[A number below 0 may be taken off without a blank]
= 5--3 -> 8
= 5---3 -> 2
